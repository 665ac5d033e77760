#pragma once

#include "host/services.h"
#include "platform/PathRules.h"

namespace platform {

/// The desktop, as far as there is one.
class Shell final : public host::Shell {
 public:
  /// `opensFiles`: whether somebody is there to read a file that opens.
  Shell(const Settings& settings, bool opensFiles) : paths_(settings), opensFiles_(opensFiles) {}

  /// Opens a file or an address with xdg-open, which goes on by itself; false
  /// where that is not installed, and for a file that nobody would read: no
  /// window may come up over an unattended screen. The verb is always "open".
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override;
  /// There is no viewer for compiled help here: 0.
  std::int64_t HtmlHelp(std::int64_t ownerWindow, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override;
  [[nodiscard]] std::optional<std::string> ComputerName() const override;
  /// There is no such dialog here: as if it were cancelled.
  std::optional<Browsed> BrowseForFolder(std::int64_t ownerWindow, std::string_view title,
                                         std::optional<std::int32_t> root, std::uint32_t flags) override;

 private:
  PathRules paths_;
  bool opensFiles_;
};

}  // namespace platform
