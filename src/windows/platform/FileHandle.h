#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "windows/com/WindowsApi.h"
#include "windows/platform/Paths.h"

namespace windows::platform {

/// An open file, and the path that it was opened by; closed at the end.
class FileHandle {
 public:
  /// As CreateFileW; others may read, write, rename and delete it meanwhile. A failure is an error.
  FileHandle(std::string_view path, DWORD access, DWORD disposition, DWORD flags = FILE_ATTRIBUTE_NORMAL)
      : path_(path),
        handle_(::CreateFileW(systemPath(path).c_str(), access,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                              flags, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) failOnFile(path_, "opened", ::GetLastError());
  }
  ~FileHandle() { ::CloseHandle(handle_); }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  [[nodiscard]] HANDLE get() const { return handle_; }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
  HANDLE handle_;
};

}  // namespace windows::platform
