#include "windows/server/Registration.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "windows/support/Windows.h"

namespace windows::server {
namespace {

constexpr const wchar_t* AddIn = L"Software\\Microsoft\\Office\\PowerPoint\\Addins\\LF2000.Connect";

TEST(Registration, EntersAndRemovesWhatTheHostLooksFor) {
  ASSERT_EQ(enter(L"C:\\Users\\me\\Lumenfold\\LF2000.dll"), S_OK);
  // Not by CLSIDFromProgID: Wine 8 looks for classes among those of the machine alone.
  std::array<wchar_t, 64> text{};
  DWORD size = sizeof text;
  EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Classes\\LF2000.Connect\\CLSID", nullptr,
                         RRF_RT_REG_SZ, nullptr, text.data(), &size),
            ERROR_SUCCESS);
  const std::wstring server = std::wstring(L"Software\\Classes\\CLSID\\") + text.data() + L"\\InprocServer32";
  std::array<wchar_t, 64> file{};
  size = sizeof file;
  EXPECT_EQ(
      RegGetValueW(HKEY_CURRENT_USER, server.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, file.data(), &size),
      ERROR_SUCCESS);
  EXPECT_STREQ(file.data(), L"C:\\Users\\me\\Lumenfold\\LF2000.dll");
  DWORD behaviour = 0;
  size = sizeof behaviour;
  EXPECT_EQ(
      RegGetValueW(HKEY_CURRENT_USER, AddIn, L"LoadBehavior", RRF_RT_REG_DWORD, nullptr, &behaviour, &size),
      ERROR_SUCCESS);
  EXPECT_EQ(behaviour, 3U);

  EXPECT_EQ(remove(), S_OK);
  EXPECT_EQ(remove(), S_OK) << "what is not there is no failure";
  EXPECT_FALSE(test::hasKey(AddIn));
  EXPECT_FALSE(test::hasKey(server.c_str()));
  EXPECT_FALSE(test::hasKey(L"Software\\Classes\\LF2000.Connect"));
  EXPECT_FALSE(test::hasKey(L"Software\\Microsoft\\Office")) << "nobody else has anything there";
}

TEST(Registration, LeavesTheEntriesOfOthers) {
  constexpr const wchar_t* Other = L"Software\\Microsoft\\Office\\PowerPoint\\Addins\\Other.Connect";
  const DWORD number = 3;
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, Other, L"LoadBehavior", REG_DWORD, &number, sizeof number),
            ERROR_SUCCESS);
  ASSERT_EQ(enter(L"C:\\LF2000.dll"), S_OK);
  EXPECT_EQ(remove(), S_OK);
  EXPECT_FALSE(test::hasKey(AddIn));
  EXPECT_TRUE(test::hasKey(Other));
  RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Office");
}

}  // namespace
}  // namespace windows::server
