#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/screens/ScreenList.h"
#include "opc/Files.h"

namespace app {

/// The file of a list of screens.
class ScreensFile {
 public:
  explicit ScreensFile(std::string path) : path_(std::move(path)) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Nothing while there is none.
  [[nodiscard]] std::optional<opc::FileState> state() const { return opc::stateOfFile(path_); }
  /// Throws basic::Error that names the file, and the line where one is wrong.
  [[nodiscard]] ScreenList read() const;
  /// Changes the list and puts the file as a whole in the place of the one before, whose rights it has; makes
  /// it when there is none. Two programs that do so at once wait for each other. Throws basic::Error, and the
  /// file is as it was.
  void change(const std::function<void(ScreenList&)>& change) const;

 private:
  std::string path_;
};

}  // namespace app
