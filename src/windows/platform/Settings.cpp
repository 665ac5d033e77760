#include "windows/platform/Settings.h"

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"

namespace windows::platform {

namespace {

constexpr const char* Store = R"(Software\VB and VBA Program Settings\)";

}  // namespace

std::string Settings::GetSetting(std::string_view application, std::string_view section,
                                 std::string_view key) const {
  const std::wstring path = com::wide(std::string(Store).append(application).append("\\").append(section));
  const std::wstring name = com::wide(key);
  DWORD size = 0;
  if (::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size) !=
      ERROR_SUCCESS) {
    return {};
  }
  std::wstring value(size / sizeof(wchar_t), L'\0');
  if (::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value.data(),
                     &size) != ERROR_SUCCESS) {
    return {};
  }
  return com::narrow(value.substr(0, value.find(L'\0')));
}

std::string Settings::Location() const {
  return std::string("HKEY_CURRENT_USER\\") + Store + "Corvane Lumenfold 2000";
}

}  // namespace windows::platform
