#include "windows/platform/Paths.h"

#include <algorithm>

#include "basic/Error.h"
#include "windows/com/Text.h"

namespace windows::platform {

namespace {

constexpr std::wstring_view LongPrefix = LR"(\\?\)";
constexpr std::wstring_view LongSharePrefix = LR"(\\?\UNC\)";

std::int32_t numberOf(DWORD error) {
  constexpr std::int32_t FileAlreadyExists = 58;
  constexpr std::int32_t PermissionDenied = 70;
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
      return static_cast<std::int32_t>(basic::RuntimeError::FileNotFound);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_NAME:
      return static_cast<std::int32_t>(basic::RuntimeError::PathNotFound);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return PermissionDenied;
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
      return FileAlreadyExists;
    default:
      return basic::AdapterError;
  }
}

/// The system's own sentence, without its end.
std::string reasonOf(DWORD error) {
  if (error == ERROR_FILE_NOT_FOUND) return "there is no such file or folder";
  if (error == ERROR_SHARING_VIOLATION) return "another program holds it";
  wchar_t* text = nullptr;
  constexpr DWORD Flags =
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  const DWORD length =
      ::FormatMessageW(Flags, nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::string reason = com::narrow({text, length});
  ::LocalFree(text);
  while (!reason.empty() && (reason.back() == '.' || reason.back() == '\r' || reason.back() == '\n')) {
    reason.pop_back();
  }
  return reason.empty() ? "error " + std::to_string(error) : reason;
}

}  // namespace

std::wstring systemPath(std::string_view path) {
  if (path.empty()) failOnFile(path, "is no path");
  std::wstring given = com::wide(path);
  std::replace(given.begin(), given.end(), L'/', L'\\');
  if (given.starts_with(LongPrefix)) return given;
  std::wstring whole(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        ::GetFullPathNameW(given.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    if (length == 0) failOnFile(path, "found", ::GetLastError());
    const bool isWhole = length < whole.size();
    whole.resize(length);
    if (isWhole) break;
  }
  if (whole.starts_with(LR"(\\.\)")) return whole;
  if (whole.starts_with(LR"(\\)")) return std::wstring(LongSharePrefix) + whole.substr(2);
  return std::wstring(LongPrefix) + whole;
}

std::string readablePath(std::wstring_view path) {
  if (path.starts_with(LongSharePrefix)) return R"(\\)" + com::narrow(path.substr(LongSharePrefix.size()));
  if (path.starts_with(LongPrefix)) path.remove_prefix(LongPrefix.size());
  return com::narrow(path);
}

void failOnFile(std::string_view path, const std::string& doing, DWORD error) {
  throw basic::Error(numberOf(error), "Lumenfold",
                     "'" + std::string(path) + "' cannot be " + doing + ": " + reasonOf(error) + ".");
}

void failOnFile(std::string_view path, const std::string& reason) {
  throw basic::Error(basic::AdapterError, "Lumenfold", "'" + std::string(path) + "' " + reason + ".");
}

}  // namespace windows::platform
