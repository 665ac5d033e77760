#pragma once

#include "host/services.h"

namespace windows::platform {

/// The system's shell. Dialogs without an owner of their own belong to the window in which the user works.
class Shell final : public host::Shell {
 public:
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override;
  /// A page of a folder is taken from the compiled file beside that folder, where there is one (help.chm
  /// beside help). 0 where there is no viewer for compiled help.
  std::int64_t HtmlHelp(std::int64_t ownerWindow, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override;
  [[nodiscard]] std::optional<std::string> ComputerName() const override;
  std::optional<Browsed> BrowseForFolder(std::int64_t ownerWindow, std::string_view title,
                                         std::optional<std::int32_t> root, std::uint32_t flags) override;
};

}  // namespace windows::platform
