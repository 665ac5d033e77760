// The add-in's entries in the registry, those of the user alone.

#include "windows/server/Registration.h"

#include <array>
#include <cstddef>

#include "windows/server/AddIn.h"

namespace windows::server {
namespace {

constexpr const wchar_t* Title = L"Corvane Lumenfold 2000";
constexpr const wchar_t* Description = L"Shows live data in presentations";
constexpr const wchar_t* ProgId = L"LF2000.Connect";

const std::wstring ClassesKey = L"Software\\Classes\\";
const std::wstring AddInsKey = L"Software\\Microsoft\\Office\\PowerPoint\\Addins";

std::wstring progIdKey() { return ClassesKey + ProgId; }

std::wstring classKey() {
  std::array<wchar_t, 64> id{};
  StringFromGUID2(CLSID_Connect, id.data(), static_cast<int>(id.size()));
  return ClassesKey + L"CLSID\\" + id.data();
}

std::wstring addInKey() { return AddInsKey + L"\\" + ProgId; }

/// Collects the first failure of several entries.
class Entries {
 public:
  void text(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    write(key, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
  }
  void number(const std::wstring& key, const wchar_t* name, DWORD value) {
    write(key, name, REG_DWORD, &value, sizeof value);
  }
  [[nodiscard]] LSTATUS result() const { return result_; }

 private:
  void write(const std::wstring& key, const wchar_t* name, DWORD type, const void* data, std::size_t size) {
    if (result_ != ERROR_SUCCESS) return;
    result_ = RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, type, data, static_cast<DWORD>(size));
  }

  LSTATUS result_ = ERROR_SUCCESS;
};

bool isEmpty(const std::wstring& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return false;
  DWORD keys = 0;
  DWORD values = 0;
  const LSTATUS result = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                          nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(key);
  return result == ERROR_SUCCESS && keys == 0 && values == 0;
}

/// Deletes what is empty of the path's last keys.
void prune(std::wstring path, int levels) {
  for (; levels > 0 && isEmpty(path); --levels) {
    if (RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()) != ERROR_SUCCESS) return;
    path.resize(path.find_last_of(L'\\'));
  }
}

}  // namespace

HRESULT enter(const std::wstring& moduleFile) {
  std::array<wchar_t, 64> id{};
  StringFromGUID2(CLSID_Connect, id.data(), static_cast<int>(id.size()));
  Entries entries;
  entries.text(progIdKey(), nullptr, Title);
  entries.text(progIdKey() + L"\\CLSID", nullptr, id.data());
  entries.text(classKey(), nullptr, Title);
  entries.text(classKey() + L"\\ProgID", nullptr, ProgId);
  entries.text(classKey() + L"\\InprocServer32", nullptr, moduleFile);
  entries.text(classKey() + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  entries.text(addInKey(), L"FriendlyName", Title);
  entries.text(addInKey(), L"Description", Description);
  entries.number(addInKey(), L"LoadBehavior", 3);  // loaded, and at each start
  entries.number(addInKey(), L"CommandLineSafe", 0);
  if (entries.result() == ERROR_SUCCESS) return S_OK;
  (void)remove();
  return HRESULT_FROM_WIN32(static_cast<DWORD>(entries.result()));
}

HRESULT remove() {
  HRESULT result = S_OK;
  for (const std::wstring& key : {progIdKey(), classKey(), addInKey()}) {
    const LSTATUS deleted = RegDeleteTreeW(HKEY_CURRENT_USER, key.c_str());
    if (deleted != ERROR_SUCCESS && deleted != ERROR_FILE_NOT_FOUND) {
      result = HRESULT_FROM_WIN32(static_cast<DWORD>(deleted));
    }
  }
  prune(AddInsKey, 3);  // Addins, PowerPoint, Office
  prune(ClassesKey + L"CLSID", 1);
  return result;
}

}  // namespace windows::server
