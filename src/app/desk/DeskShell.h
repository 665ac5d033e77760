#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace app {

/// The desktop of an author who sits in front of a browser, perhaps of another machine: pages, help and the
/// errors log open there.
class DeskShell final : public host::Shell {
 public:
  /// `open` hears an address, of the web or below the desk's own; `showLog` is asked for the errors log;
  /// `offer` hears of a presentation's file. `usual` outlives this object.
  DeskShell(host::Shell& usual, std::function<void(const std::string& url)> open,
            std::function<void()> showLog, std::function<void(const std::string& file)> offer)
      : usual_(usual), open_(std::move(open)), showLog_(std::move(showLog)), offer_(std::move(offer)) {}

  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override {
    if (file == LF2000::modErrors::ErrorLogFile()) return showLog_(), true;
    if (isPresentation(file)) return offer_(std::string(file)), true;
    if (!file.starts_with("http://") && !file.starts_with("https://")) {
      return usual_.ShellExecute(verb, file, showCommand);
    }
    open_(std::string(file));
    return true;
  }
  std::int64_t HtmlHelp(std::int64_t, std::string_view file, std::uint32_t, std::uint32_t) override {
    constexpr std::int64_t someWindow = 1;
    open_("help/" + std::string(file.substr(file.find_last_of("/\\") + 1)));
    return someWindow;
  }
  [[nodiscard]] std::optional<std::string> ComputerName() const override { return usual_.ComputerName(); }
  std::optional<Browsed> BrowseForFolder(std::int64_t owner, std::string_view title,
                                         std::optional<std::int32_t> root, std::uint32_t flags) override {
    return usual_.BrowseForFolder(owner, title, root, flags);
  }

 private:
  [[nodiscard]] static bool isPresentation(std::string_view file) {
    constexpr std::string_view Ending = ".pptx";
    return file.size() > Ending.size() &&
           basic::EqualsIgnoreCase(file.substr(file.size() - Ending.size()), Ending);
  }

  host::Shell& usual_;
  std::function<void(const std::string&)> open_;
  std::function<void()> showLog_;
  std::function<void(const std::string&)> offer_;
};

}  // namespace app
