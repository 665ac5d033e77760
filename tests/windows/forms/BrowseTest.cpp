// The system's own dialogs for files and folders, as buttons of forms open them.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "windows/forms/FormDeck.h"
#include "windows/support/Windows.h"

namespace windows::forms {

namespace {

/// The number of the field (cmb13 of dlgs.h) and a message (BFFM_SETSELECTIONW of shlobj.h).
constexpr int FileName = 0x47C;
constexpr UINT SetSelection = WM_USER + 103;

struct BrowseTest : testing::Test {
  /// Clicks the button and answers the dialog with that title until it is gone: it loses what it is told
  /// before it is all there.
  void browse(const std::string& button, const std::string& title, const std::function<void(HWND)>& answer) {
    bool isAnswered = false;
    const auto timer = deck.screen.loop.CreateTimer([&] {
      const HWND dialog = test::dialogCalled(title);
      if (dialog == nullptr) return;
      isAnswered = true;
      answer(dialog);
    });
    timer->Interval(20);
    timer->Enabled(true);
    deck.screen.click(button);
    while (!isAnswered || test::dialogCalled(title) != nullptr) deck.screen.loop.DoEvents();
    deck.screen.settle();
  }
  void open(const char* form) {
    deck.open(form);
    deck.screen.settle();
  }
  [[nodiscard]] std::string typed(const char* label) const { return test::textOf(deck.screen.field(label)); }
  static void cancel(HWND dialog) { test::press(dialog, IDCANCEL); }

  test::FormDeck deck;
};

}  // namespace

TEST_F(BrowseTest, AFileIsChosen) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "prices \u00FC.txt";
  std::ofstream(file) << "Item\n";
  open("frmTextConnection");
  browse("&Browse", "Select the text file.", &BrowseTest::cancel);
  EXPECT_EQ(typed("&File"), "");
  browse("&Browse", "Select the text file.", [&](HWND dialog) {
    ::SetDlgItemTextW(dialog, FileName, file.c_str());
    test::press(dialog, IDOK);
  });
  EXPECT_EQ(typed("&File"), com::narrow(file.c_str()));
  EXPECT_TRUE(::IsWindowEnabled(deck.screen.top()));
  std::filesystem::remove(file);
}

TEST_F(BrowseTest, AFolderIsChosen) {
  open("frmDataObject");
  browse("Bro&wse", "Browse for Folder", &BrowseTest::cancel);
  EXPECT_EQ(typed("&Folder"), "");
  browse("Bro&wse", "Browse for Folder", [&](HWND dialog) {
    wchar_t folder[] = L"C:\\windows";
    ::SendMessageW(dialog, SetSelection, TRUE, reinterpret_cast<LPARAM>(folder));
    test::press(dialog, IDOK);
  });
  EXPECT_EQ(typed("&Folder"), "C:\\windows");
}

TEST_F(BrowseTest, ADialogThatIsGoneAsksNothing) {
  open("frmTextConnection");
  ::PostMessageW(deck.screen.find("&Browse"), BM_CLICK, 0, 0);
  ::PostMessageW(deck.screen.top(), WM_CLOSE, 0, 0);
  deck.screen.settle();
  EXPECT_TRUE(deck.screen.isEmpty());
}

}  // namespace windows::forms
