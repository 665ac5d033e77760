// The registry's calls for wide characters, with their texts as UTF-8.

#include "windows/platform/Registry.h"

#include <cstring>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"

namespace windows::platform {

namespace {

HKEY handle(Registry::Key key) {
  // Its own roots are numbers of 32 bits with their sign (HKEY_CURRENT_USER).
  constexpr Registry::Key FirstRoot = 0x80000000U;
  constexpr Registry::Key LastRoot = 0x8000FFFFU;
  if (key < FirstRoot || key > LastRoot) return reinterpret_cast<HKEY>(key);
  return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(key)));
}

Registry::Key number(HKEY key) { return reinterpret_cast<Registry::Key>(key); }

std::int32_t code(LSTATUS status) { return static_cast<std::int32_t>(status); }

bool isText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

/// Up to its NUL, and with one.
std::vector<unsigned char> textBytes(const std::vector<unsigned char>& wide) {
  std::wstring text(wide.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), wide.data(), text.size() * sizeof(wchar_t));
  const std::string narrow = com::narrow(text.substr(0, text.find(L'\0')));
  std::vector<unsigned char> bytes(narrow.begin(), narrow.end());
  bytes.push_back(0);
  return bytes;
}

std::vector<unsigned char> wideBytes(const std::vector<unsigned char>& text) {
  const std::wstring wide = com::wide(std::string(text.begin(), text.end()));
  std::vector<unsigned char> bytes(wide.size() * sizeof(wchar_t));
  std::memcpy(bytes.data(), wide.data(), bytes.size());
  return bytes;
}

}  // namespace

std::int32_t Registry::OpenKey(Key root, std::string_view subkey, std::uint32_t access, Key& opened) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(handle(root), com::wide(subkey).c_str(), 0, access, &key);
  opened = number(key);
  return code(status);
}

std::int32_t Registry::CreateKey(Key root, std::string_view subkey, Key& opened) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegCreateKeyExW(handle(root), com::wide(subkey).c_str(), 0, nullptr, 0,
                                           KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
  opened = number(key);
  return code(status);
}

std::int32_t Registry::DeleteKey(Key root, std::string_view subkey) {
  return code(::RegDeleteKeyW(handle(root), com::wide(subkey).c_str()));
}

std::int32_t Registry::CloseKey(Key key) { return code(::RegCloseKey(handle(key))); }

std::int32_t Registry::QueryValue(Key key, std::string_view name, std::uint32_t& type,
                                  std::vector<unsigned char>* data, std::uint32_t& size) {
  const std::wstring wideName = com::wide(name);
  DWORD found = 0;
  DWORD count = 0;
  LSTATUS status = ::RegQueryValueExW(handle(key), wideName.c_str(), nullptr, &found, nullptr, &count);
  if (status != ERROR_SUCCESS) return code(status);
  std::vector<unsigned char> bytes(count);
  status = ::RegQueryValueExW(handle(key), wideName.c_str(), nullptr, &found, bytes.data(), &count);
  if (status != ERROR_SUCCESS) return code(status);
  bytes.resize(count);
  if (isText(found)) bytes = textBytes(bytes);
  type = found;
  const std::uint32_t room = size;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data == nullptr) return ERROR_SUCCESS;
  if (room != 0 && size > room) return ERROR_MORE_DATA;
  *data = std::move(bytes);
  return ERROR_SUCCESS;
}

std::int32_t Registry::SetValue(Key key, std::string_view name, std::uint32_t type,
                                const std::vector<unsigned char>& data) {
  const std::vector<unsigned char> bytes = isText(type) ? wideBytes(data) : data;
  return code(::RegSetValueExW(handle(key), com::wide(name).c_str(), 0, type, bytes.data(),
                               static_cast<DWORD>(bytes.size())));
}

std::int32_t Registry::DeleteValue(Key key, std::string_view name) {
  return code(::RegDeleteValueW(handle(key), com::wide(name).c_str()));
}

}  // namespace windows::platform
