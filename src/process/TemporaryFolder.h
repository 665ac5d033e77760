#pragma once

#include <filesystem>

namespace process {

/// A folder among the temporary files that goes with this object, with all that
/// is in it.
class TemporaryFolder {
 public:
  /// Makes it, for this user alone. Throws std::filesystem::filesystem_error.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace process
