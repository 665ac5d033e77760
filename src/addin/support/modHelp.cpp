#include "addin/support/modHelp.h"

#include "addin/support/modGlobalFunctions.h"
#include "host/services.h"

namespace LF2000::modHelp {

std::int64_t ShowHelp(std::int64_t ownerWindow, std::string_view helpFile,
                      std::optional<std::int32_t> contextId) {
  constexpr std::uint32_t HH_DISPLAY_TOPIC = 0;
  constexpr std::uint32_t HH_HELP_CONTEXT = 15;
  std::int64_t window = 0;
  modGlobalFunctions::IgnoreErrors([&] {
    window =
        host::Current().shell->HtmlHelp(ownerWindow, helpFile, contextId ? HH_HELP_CONTEXT : HH_DISPLAY_TOPIC,
                                        static_cast<std::uint32_t>(contextId.value_or(0)));
  });
  return window;
}

}  // namespace LF2000::modHelp
