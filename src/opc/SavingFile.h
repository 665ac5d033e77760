#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "process/Descriptor.h"

namespace opc {

/// A new file beside the one that is to be saved, ".lumenfold.XXXXXX", locked
/// (flock) while somebody writes it. It is removed again unless it was renamed.
class SavingFile {
 public:
  explicit SavingFile(const std::filesystem::path& target);
  ~SavingFile();
  SavingFile(const SavingFile&) = delete;
  SavingFile& operator=(const SavingFile&) = delete;

  /// Below 0 when it could not be made; errno tells why.
  [[nodiscard]] int descriptor() const { return descriptor_.get(); }
  /// Behind what has been written; false when not all of it could be, and errno tells why.
  [[nodiscard]] bool write(std::string_view bytes);
  /// Some file systems tell only now that the disk is full. It stays locked.
  [[nodiscard]] bool close();
  /// Puts it in the target's place. Unless `replacing`, a target that has come
  /// up meanwhile is an error (EEXIST), where the file system can tell.
  [[nodiscard]] bool renameTo(const std::filesystem::path& target, bool replacing);
  /// Its present status, also once it is closed and renamed; false when that cannot be told.
  [[nodiscard]] bool look(struct stat& status) const;

 private:
  std::string path_;
  process::Descriptor descriptor_;
  process::Descriptor lock_;  // the same file once more
};

/// Keeps other programs on this machine from putting a saved file into the same
/// folder (flock of the folder), between the last look at a deck and its
/// replacement. Across a network nothing keeps them, and the look alone guards.
/// A folder that cannot be locked is left alone.
class SavingLock {
 public:
  /// Waits up to 5 s.
  explicit SavingLock(const std::filesystem::path& folder);

  /// Somebody else still held the lock at the end of the wait.
  [[nodiscard]] bool isBusy() const { return isBusy_; }

 private:
  process::Descriptor descriptor_;
  bool isBusy_ = false;
};

/// Removes what saves that were killed left in a folder: files of SavingFile
/// that nobody holds and nobody has written to for a minute.
void removeAbandoned(const std::filesystem::path& folder);

}  // namespace opc
