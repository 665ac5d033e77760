// Help: the compiled file in the system's viewer, and what a user is told where there is none.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "windows/com/Text.h"
#include "windows/platform/Machine.h"
#include "windows/support/Windows.h"

namespace windows::platform {

namespace {

struct HelpTest : testing::Test {
  HelpTest() { std::filesystem::create_directories(folder / "64-bit"); }
  ~HelpTest() override {
    std::error_code viewed;  // a viewer holds its file as long as the program runs
    std::filesystem::remove_all(folder, viewed);
  }
  HelpTest(const HelpTest&) = delete;
  HelpTest& operator=(const HelpTest&) = delete;

  /// As the module in the folder 64-bit asks for it.
  std::int64_t show() {
    return machine.shell.HtmlHelp(0, com::narrow((folder / "64-bit" / "help" / "index.html").wstring()), 0,
                                  0);
  }
  Machine machine;
  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / testing::UnitTest::GetInstance()->current_test_info()->name();
};

}  // namespace

TEST_F(HelpTest, TheCompiledFileIsShownWhichLiesBesideTheModulesFolder) {
  std::filesystem::copy_file(LUMENFOLD_COMPILED_HELP, folder / "help.chm",
                             std::filesystem::copy_options::overwrite_existing);
  const auto shown = reinterpret_cast<HWND>(static_cast<LONG_PTR>(show()));
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(test::dialogCalled("Corvane Lumenfold 2000"), shown);
  ::DestroyWindow(shown);
}

TEST_F(HelpTest, WhoHasNoHelpIsToldWhereItShouldBe) {
  std::wstring told;
  const auto timer = machine.loop.CreateTimer([&] {
    const HWND box = test::dialogCalled("Corvane Lumenfold 2000");
    if (box == nullptr) return;
    wchar_t text[500] = {};
    ::GetDlgItemTextW(box, 0xFFFF, text, 500);
    told = text;
    test::press(box, IDOK);
  });
  timer->Interval(1);
  timer->Enabled(true);
  EXPECT_EQ(show(), 0);
  EXPECT_NE(told.find((folder / "help" / "index.html").wstring()), std::wstring::npos) << com::narrow(told);
}

}  // namespace windows::platform
