#include "platform/Shell.h"

#include <unistd.h>

#include <array>

#include "basic/Error.h"
#include "platform/DetachedProcess.h"

namespace platform {

bool Shell::ShellExecute(std::string_view, std::string_view file, std::int32_t) {
  try {
    const bool isAddress = file.find("://") != std::string_view::npos;
    if (!isAddress && !opensFiles_) return false;
    std::string argument = isAddress ? std::string(file) : paths_.translate(file);
    if (argument.starts_with('-')) argument.insert(0, "./");  // not an option
    return startDetached("xdg-open", argument);
  } catch (const basic::Error&) {
    return false;  // a path that leads nowhere here
  }
}

std::int64_t Shell::HtmlHelp(std::int64_t, std::string_view, std::uint32_t, std::uint32_t) { return 0; }

std::optional<std::string> Shell::ComputerName() const {
  std::array<char, 256> name{};
  if (::gethostname(name.data(), name.size() - 1) != 0) return std::nullopt;
  return std::string(name.data());
}

std::optional<Shell::Browsed> Shell::BrowseForFolder(std::int64_t, std::string_view,
                                                     std::optional<std::int32_t>, std::uint32_t) {
  return std::nullopt;
}

}  // namespace platform
