#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace opc {

/// What tells one state of a file from another without reading it.
struct FileState {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modifiedSeconds = 0;
  std::int64_t modifiedNanoseconds = 0;
  /// When its status changed last: no program can set that back, and it tells what is written
  /// within one tick of the time above, or keeps it.
  std::int64_t changedSeconds = 0;
  std::int64_t changedNanoseconds = 0;

  friend bool operator==(const FileState&, const FileState&) = default;
};

struct FileContent {
  std::string bytes;
  FileState state;
};

/// Reads a whole regular file of at most `maximum` bytes. Throws basic::Error
/// naming the file and why. Waits as long as the file system takes, telling after
/// every piece that it gets on; any thread may call it.
FileContent readFile(
    const std::string& path, std::uint64_t maximum, const std::function<void()>& gettingOn = [] {});

/// As readFile(), but fails with the reason alone, for a caller with words of its own.
FileContent readContent(
    const std::string& path, std::uint64_t maximum, const std::function<void()>& gettingOn = [] {});

/// The present state of a file; nothing when there is none, or it is no regular file. Any
/// thread may call it.
std::optional<FileState> stateOfFile(const std::string& path);

/// Replaces a file, or creates it, so that a crash at any moment leaves the old
/// file or the new one: a new file beside it is flushed and renamed over it. The
/// old file's mode stays, its owner when the system allows; a symbolic link is
/// followed. With `expected`, an existing file in another state is left alone
/// and an error thrown: another program wrote it. Of two programs of this machine
/// that save at the same time the second gets this error. Returns the new state.
/// On an error (full disk, read-only file or folder) the old file is whole and
/// nothing is left behind; what killed saves left in the folder is removed.
FileState replaceFile(const std::string& path, std::string_view bytes, const FileState* expected = nullptr);

/// Makes renames in a folder last. A file system that cannot do it is no reason to call a finished save a
/// failure.
void flushFolder(const std::string& folder);

}  // namespace opc
