// Files by the system's calls for wide characters.

#include "windows/platform/Files.h"

#include <algorithm>

#include "basic/Strings.h"
#include "windows/com/Text.h"
#include "windows/platform/FileHandle.h"
#include "windows/platform/SystemClock.h"

namespace windows::platform {

namespace {

class OpenFile final : public host::InputFile {
 public:
  explicit OpenFile(std::string_view path) : file_(path, GENERIC_READ, OPEN_EXISTING) {}

  [[nodiscard]] host::Bytes ReadAll() override {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file_.get(), &size) || !::SetFilePointerEx(file_.get(), {}, nullptr, FILE_BEGIN)) {
      failOnFile(file_.path(), "read", ::GetLastError());
    }
    host::Bytes bytes;
    const auto wanted = static_cast<std::size_t>(size.QuadPart);
    bytes.data = std::make_unique<char[]>(wanted);
    while (bytes.size < wanted) {
      constexpr std::size_t MostAtOnce = std::size_t{1} << 30U;
      const auto piece = static_cast<DWORD>(std::min(wanted - bytes.size, MostAtOnce));
      DWORD count = 0;
      if (!::ReadFile(file_.get(), bytes.data.get() + bytes.size, piece, &count, nullptr)) {
        failOnFile(file_.path(), "read", ::GetLastError());
      }
      if (count == 0) break;  // it has become shorter
      bytes.size += count;
    }
    return bytes;
  }

 private:
  FileHandle file_;
};

/// Where a file or folder really lies, behind all links.
std::wstring finalPath(std::string_view path) {
  // Folders are opened with this flag alone.
  const FileHandle file(path, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  constexpr std::size_t Longest = 32768;
  std::wstring found(Longest, L'\0');
  const DWORD length = ::GetFinalPathNameByHandleW(file.get(), found.data(), Longest, 0);
  if (length == 0 || length >= Longest) failOnFile(path, "found", ::GetLastError());
  found.resize(length);
  return found;
}

/// Whether one path lies below another, in any case of letters.
bool isBelow(const std::wstring& path, std::wstring folder) {
  if (!folder.ends_with(L'\\')) folder += L'\\';
  return path.size() > folder.size() &&
         ::CompareStringOrdinal(path.data(), static_cast<int>(folder.size()), folder.data(),
                                static_cast<int>(folder.size()), TRUE) == CSTR_EQUAL;
}

std::string joined(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && path.back() != '\\' && path.back() != '/') path += '\\';
  return path.append(name);
}

std::uint64_t number(DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; }

}  // namespace

std::unique_ptr<host::InputFile> Files::OpenForInput(std::string_view path) {
  return std::make_unique<OpenFile>(path);
}

void Files::Append(std::string_view path, std::string_view text) {
  const FileHandle file(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  while (!text.empty()) {
    DWORD count = 0;
    constexpr std::size_t MostAtOnce = std::size_t{1} << 30U;
    const auto piece = static_cast<DWORD>(std::min(text.size(), MostAtOnce));
    if (!::WriteFile(file.get(), text.data(), piece, &count, nullptr)) {
      failOnFile(path, "written", ::GetLastError());
    }
    text.remove_prefix(count);
  }
}

void Files::Kill(std::string_view path) {
  if (!::DeleteFileW(systemPath(path).c_str())) failOnFile(path, "deleted", ::GetLastError());
}

void Files::Name(std::string_view path, std::string_view newPath) {
  if (!::MoveFileExW(systemPath(path).c_str(), systemPath(newPath).c_str(), MOVEFILE_COPY_ALLOWED)) {
    failOnFile(path, "renamed to '" + std::string(newPath) + "'", ::GetLastError());
  }
}

basic::Date Files::FileDateTime(std::string_view path) const {
  const FileHandle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION found{};
  FILE_BASIC_INFO times{};
  if (!::GetFileInformationByHandle(file.get(), &found)) failOnFile(path, "found", ::GetLastError());
  // Not every file system knows when something else of a file has changed.
  if (!::GetFileInformationByHandleEx(file.get(), FileBasicInfo, &times, sizeof times)) times = {};
  const State now{number(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime),
                  static_cast<std::uint64_t>(times.ChangeTime.QuadPart),
                  number(found.nFileSizeHigh, found.nFileSizeLow),
                  number(found.nFileIndexHigh, found.nFileIndexLow)};
  State& known = states_.try_emplace(std::string(path), now).first->second;
  if (known.written != now.written) {
    known = now;
  } else if (known.changed != now.changed || known.size != now.size || known.file != now.file) {
    // Within its half of the second, so that it rounds to the same one.
    constexpr std::int64_t Steps = 1000;
    known = {now.written, now.changed, now.size, now.file, (known.moves + 1) % Steps};
  }
  constexpr std::uint64_t Half = 5'000'000;
  constexpr std::uint64_t Step = 100;
  const std::uint64_t half = known.written - known.written % Half;
  const std::uint64_t moved =
      half + (known.written - half + static_cast<std::uint64_t>(known.moves) * Step) % Half;
  return localDate({static_cast<DWORD>(moved), static_cast<DWORD>(moved >> 32U)});
}

std::string Files::LocalPath(std::string_view path) const { return readablePath(systemPath(path)); }

std::string Files::FileWithin(std::string_view folder, std::string_view name) const {
  const std::string path = joined(folder, name);
  const auto refuse = [&] { failOnFile(name, "leads out of the folder '" + std::string(folder) + "'"); };
  // A drive, a root, a stream: no name of a file below.
  if (name.find(':') != std::string_view::npos || name.starts_with('\\') || name.starts_with('/')) refuse();
  // Before anything is touched, and whether there is such a file or not.
  if (!isBelow(systemPath(path), systemPath(folder))) refuse();
  std::wstring found = finalPath(path);
  if (!isBelow(found, finalPath(folder))) refuse();
  return readablePath(found);
}

std::string Files::TempPath() const {
  std::wstring folder(MAX_PATH + 1, L'\0');
  folder.resize(::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
  return com::narrow(folder);
}

std::string Files::TempFileName(std::string_view folder, std::string_view prefix) {
  const std::wstring within = com::wide(folder);
  std::wstring name(MAX_PATH, L'\0');
  if (::GetTempFileNameW(within.c_str(), com::wide(prefix).c_str(), 0, name.data()) == 0) {
    failOnFile(folder, "given a temporary file", ::GetLastError());
  }
  name.resize(name.find(L'\0'));
  return com::narrow(name);
}

}  // namespace windows::platform
