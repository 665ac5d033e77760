#pragma once

#include <string>

namespace platform {

/// An open file descriptor and the path it was opened by; closed at the end.
class FileHandle {
 public:
  /// As open(2); a failure is an error that says why.
  FileHandle(std::string path, int flags, unsigned mode = 0);
  ~FileHandle();
  FileHandle(FileHandle&& other) noexcept;
  FileHandle& operator=(FileHandle&&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }
  [[nodiscard]] const std::string& path() const { return path_; }

  /// Closes; a failure (data that could not be written after all) is an error.
  void close();

 private:
  std::string path_;
  int descriptor_;
};

/// Raises the error that `errorNumber` (errno) means for that path.
[[noreturn]] void failOnFile(const std::string& path, const std::string& doing, int errorNumber);
/// The same for a reason of its own.
[[noreturn]] void failOnFile(const std::string& path, const std::string& reason);

}  // namespace platform
