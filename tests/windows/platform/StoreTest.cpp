// What the registry holds: the user's settings, and entries of all kinds. Keys made here are taken away
// again.

#include <gtest/gtest.h>

#include <string>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"
#include "windows/platform/Module.h"
#include "windows/platform/Registry.h"
#include "windows/platform/Settings.h"
#include "windows/platform/UserLocale.h"

namespace windows::platform {

namespace {

constexpr host::Registry::Key CurrentUser = 0x80000001U;

}  // namespace

TEST(StoreTest, SettingsAreThoseOfVisualBasic) {
  const std::wstring application = L"Software\\VB and VBA Program Settings\\LF2000 Test é";
  const std::wstring section = application + L"\\Info";
  const auto put = [&](const wchar_t* key, const std::wstring& text) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, section.c_str(), key, REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  };
  put(L"Debug", L"True");
  put(L"Name", L"Abfl\u00fcge \u20ac");
  const DWORD number = 1;
  ::RegSetKeyValueW(HKEY_CURRENT_USER, section.c_str(), L"Number", REG_DWORD, &number, sizeof number);
  const Settings settings;
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Info", "Debug"), "True");
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Info", "Name"), "Abflüge €");
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Info", "Number"), "");
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Info", "Missing"), "");
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Other", "Debug"), "");
  put(L"Debug", L"0");
  EXPECT_EQ(settings.GetSetting("LF2000 Test é", "Info", "Debug"), "0");
  EXPECT_EQ(::RegDeleteTreeW(HKEY_CURRENT_USER, application.c_str()), ERROR_SUCCESS);
}

TEST(StoreTest, EntriesKeepTheirTypesAndTexts) {
  Registry registry;
  const std::string name = "Software\\LF2000 Test";
  host::Registry::Key key = 0;
  ASSERT_EQ(registry.CreateKey(CurrentUser, name, key), 0);
  const std::string text = "Größe €";
  std::vector<unsigned char> bytes(text.begin(), text.end());
  bytes.push_back(0);
  EXPECT_EQ(registry.SetValue(key, "Ort", REG_SZ, bytes), 0);
  EXPECT_EQ(registry.SetValue(key, "Blob", REG_BINARY, {1, 0, 2}), 0);

  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(registry.QueryValue(key, "Ort", type, nullptr, size), 0);
  EXPECT_EQ(type, 1U);
  EXPECT_EQ(size, bytes.size());
  std::vector<unsigned char> found;
  EXPECT_EQ(registry.QueryValue(key, "ORT", type, &found, size), 0);
  EXPECT_EQ(found, bytes);
  wchar_t stored[32] = {};
  DWORD room = sizeof stored;
  ::RegGetValueW(HKEY_CURRENT_USER, com::wide(name).c_str(), L"Ort", RRF_RT_REG_SZ, nullptr, stored, &room);
  EXPECT_EQ(com::narrow(stored), text);
  size = 4;
  EXPECT_EQ(registry.QueryValue(key, "Ort", type, &found, size), ERROR_MORE_DATA);
  size = 0;
  EXPECT_EQ(registry.QueryValue(key, "Blob", type, &found, size), 0);
  EXPECT_EQ(found, (std::vector<unsigned char>{1, 0, 2}));

  EXPECT_EQ(registry.DeleteValue(key, "Ort"), 0);
  EXPECT_EQ(registry.QueryValue(key, "Ort", type, nullptr, size), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(registry.CloseKey(key), 0);
  EXPECT_EQ(registry.DeleteKey(CurrentUser, name), 0);
  EXPECT_EQ(registry.OpenKey(CurrentUser, name, KEY_QUERY_VALUE, key), ERROR_FILE_NOT_FOUND);
}

TEST(StoreTest, PicturesOfTheControlPanelAreThoseOfFormat) {
  EXPECT_EQ(formatPicture("dd.MM.yyyy"), "dd.mm.yyyy");
  EXPECT_EQ(formatPicture("dddd, d. MMMM yyyy"), "dddd, d. mmmm yyyy");
  EXPECT_EQ(formatPicture("d 'de' MMMM 'de' yy"), "d \"de\" mmmm \"de\" yy");
  EXPECT_EQ(formatPicture("h:mm:ss tt"), "h:nn:ss AM/PM");
  EXPECT_EQ(formatPicture("HH:mm"), "hh:nn");
  const basic::Locale locale = readUserLocale();
  EXPECT_EQ(locale.days[0], "Sunday");
  EXPECT_EQ(locale.shortDays[6], "Sat");
  EXPECT_EQ(locale.months[11], "December");
}

TEST(StoreTest, TheModuleIsTheFileThatHoldsTheCode) {
  const Module module;
  EXPECT_EQ(module.EXEName(), "test_windows_platform");
  EXPECT_TRUE(module.Path().ends_with("\\windows\\platform")) << module.Path();
}

}  // namespace windows::platform
