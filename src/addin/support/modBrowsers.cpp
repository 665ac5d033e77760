#include "addin/support/modBrowsers.h"

#include <optional>

#include "addin/support/modGlobalFunctions.h"
#include "host/services.h"

namespace LF2000::modBrowsers {

namespace {

std::optional<host::Shell::Browsed> Browse(std::int64_t ownerWindow, std::string_view title,
                                           std::optional<std::int32_t> root, std::uint32_t flags) {
  std::optional<host::Shell::Browsed> browsed;
  modGlobalFunctions::IgnoreErrors(
      [&] { browsed = host::Current().shell->BrowseForFolder(ownerWindow, title, root, flags); });
  return browsed;
}

}  // namespace

std::string BrowseForComputer(std::int64_t ownerWindow, std::string_view title) {
  constexpr std::int32_t CSIDL_NETWORK = 18;
  constexpr std::uint32_t BIF_BROWSEFORCOMPUTER = 0x1000;
  const auto browsed = Browse(ownerWindow, title, CSIDL_NETWORK, BIF_BROWSEFORCOMPUTER);
  return browsed ? browsed->displayName : std::string();
}

std::string BrowseForFolder(std::int64_t ownerWindow, std::string_view title) {
  constexpr std::uint32_t BIF_RETURNONLYFSDIRS = 1;
  const auto browsed = Browse(ownerWindow, title, std::nullopt, BIF_RETURNONLYFSDIRS);
  return browsed ? browsed->path.value_or("") : std::string();
}

}  // namespace LF2000::modBrowsers
