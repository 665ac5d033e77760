#pragma once

#include <filesystem>

#include "process/Descriptor.h"

namespace process {

/// A folder among the temporary files that goes with this object, with all that
/// is in it. It is locked (flock) as long as it is in use; making one removes
/// those of this user that a program left behind when it was killed.
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
  Descriptor lock_;
};

}  // namespace process
