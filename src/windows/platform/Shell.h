#pragma once

#include "host/services.h"

namespace windows::platform {

/// The system's shell. Dialogs without an owner of their own belong to the window in which the user works.
class Shell final : public host::Shell {
 public:
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override;
  /// A page of a folder is taken from the compiled file beside that folder (help.chm beside help), there or
  /// one folder above. Without that file, or a viewer for it, what opens such pages shows it, which answers
  /// 0; without both the user is told.
  std::int64_t HtmlHelp(std::int64_t ownerWindow, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override;
  [[nodiscard]] std::optional<std::string> ComputerName() const override;
  std::optional<Browsed> BrowseForFolder(std::int64_t ownerWindow, std::string_view title,
                                         std::optional<std::int32_t> root, std::uint32_t flags) override;
};

}  // namespace windows::platform
