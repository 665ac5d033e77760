// A form with one control of each kind, used as people use dialogs.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "fakes/FakeServices.h"
#include "windows/forms/Metrics.h"
#include "windows/forms/ProgressMeter.h"
#include "windows/forms/Screen.h"
#include "windows/support/Windows.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

namespace {

struct OrderForm final : ::Forms::Form {
  OrderForm() : Form("frmOrder", "Order") {
    count.Text("3");
    kind.Items({{"Rye"}, {"Plum", "sold out", false}, {"Seed"}});
    kind.Text("Rye");
    parts.Items({{"Crust"}, {"Crumb"}, {"Seeds"}});
    preview.Columns({{"Item"}, {"Price"}});
    preview.Rows({1, {{"Rye", "4.80"}, {"Plum", "4.10"}, {"Seed", "3.20"}}});
    preview.Selects(true);
    count.Change = [this] { Complain(count, count.Text() == "0" ? "None is no order." : ""); };
    close.Click = [this] {
      if (count.Text() == "0") return Complain(count, "None is no order.");
      Close(::Forms::Result::OK);
    };
    AddRow("&Count", {&count, &steps});
    AddRow("", {&gift});
    AddRow("&Kind", {&kind});
    AddRow("Way", {&red, &blue});
    AddRow("&Parts", {&parts});
    AddRow("", {&preview});
    AddButtons({&close});
    DefaultButton(close);
  }
  void CatchError() override { ADD_FAILURE(); }

  ::Forms::TextBox& count = Add<::Forms::TextBox>("txtCount");
  ::Forms::UpDown& steps = Add<::Forms::UpDown>("udCount", count, 1, 9);
  ::Forms::CheckBox& gift = Add<::Forms::CheckBox>("chkGift", "&Gift");
  ::Forms::ComboBox& kind = Add<::Forms::ComboBox>("cmbKind");
  ::Forms::OptionButton& red = Add<::Forms::OptionButton>("optRed", "&Red", "colour");
  ::Forms::OptionButton& blue = Add<::Forms::OptionButton>("optBlue", "&Blue", "colour");
  ::Forms::ListBox& parts = Add<::Forms::ListBox>("lstParts", std::vector<std::string>{"Part"}, true);
  ::Forms::Grid& preview = Add<::Forms::Grid>("grdPreview");
  ::Forms::CommandButton& close = Add<::Forms::CommandButton>("cmdClose", "Close");
};

struct DialogTest : testing::Test {
  DialogTest() {
    machine.UseForms(&screen.view);
    form->Show(::Forms::Placement::Dialog, [this](::Forms::Result how) { result = how; });
    screen.settle();
    dialog = screen.top();
  }
  [[nodiscard]] HWND windowOfClass(const wchar_t* name, int which = 0) const {
    for (const HWND each : test::visibleWindows(dialog)) {
      if (test::classOf(each) == name && which-- == 0) return each;
    }
    return nullptr;
  }

  fakes::Machine machine;
  test::Screen screen;
  std::shared_ptr<OrderForm> form = std::make_shared<OrderForm>();
  std::optional<::Forms::Result> result;
  HWND dialog = nullptr;
};

}  // namespace

TEST_F(DialogTest, WhatIsTypedAndSteppedIsTheFormsText) {
  const HWND field = windowOfClass(L"Edit");
  ::SetFocus(field);
  ::SendMessageW(field, EM_SETSEL, 0, -1);
  screen.type("7");
  EXPECT_EQ(form->count.Text(), "7");
  form->Update([&] { form->count.Text("5"); });
  EXPECT_EQ(test::textOf(field), "5");
  const HWND steps = windowOfClass(UPDOWN_CLASSW);
  NMUPDOWN told{{steps, static_cast<UINT_PTR>(::GetDlgCtrlID(steps)), static_cast<UINT>(UDN_DELTAPOS)}, 0, 1};
  ::SendMessageW(dialog, WM_NOTIFY, told.hdr.idFrom, reinterpret_cast<LPARAM>(&told));
  EXPECT_EQ(form->count.Text(), "6");
}

TEST_F(DialogTest, TicksAndOptionsFollowTheForm) {
  screen.click("&Gift");
  EXPECT_TRUE(form->gift.Value());
  screen.click("&Gift");
  EXPECT_FALSE(form->gift.Value());
  screen.click("&Blue");
  EXPECT_TRUE(form->blue.Value());
  screen.click("&Red");
  EXPECT_FALSE(form->blue.Value());
  EXPECT_EQ(::SendMessageW(screen.find("&Blue"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  form->Update([&] { form->gift.Enabled(false, "Gifts are for members."); });
  EXPECT_FALSE(::IsWindowEnabled(screen.find("&Gift")));
  EXPECT_NE(screen.find("Gifts are for members."), nullptr);
}

TEST_F(DialogTest, WhatAListDoesNotOfferIsDrawnBack) {
  const HWND list = windowOfClass(L"ComboBox");
  const auto choose = [&](WPARAM place) {
    ::SendMessageW(list, CB_SETCURSEL, place, 0);
    ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(list), CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(list));
    return form->kind.Text();
  };
  EXPECT_EQ(choose(2), "Seed");
  EXPECT_EQ(choose(1), "Seed");
  EXPECT_EQ(::SendMessageW(list, CB_GETCURSEL, 0, 0), 2);
}

TEST_F(DialogTest, BoxesInAListChooseItsLines) {
  const HWND list = windowOfClass(WC_LISTVIEWW);
  ListView_SetCheckState(list, 0, TRUE);
  ListView_SetCheckState(list, 2, TRUE);
  EXPECT_EQ(form->parts.Selected(), (::Forms::Places{0, 2}));
  form->Update([&] { form->parts.Selected({1}); });
  EXPECT_EQ(ListView_GetCheckState(list, 0), 0U);
  EXPECT_EQ(ListView_GetCheckState(list, 1), 1U);
}

TEST_F(DialogTest, ARectangleIsDrawnOverCells) {
  const HWND grid = windowOfClass(WC_LISTVIEWW, 1);
  const auto middleOf = [&](int row, int column) {
    RECT cell{};
    ListView_GetSubItemRect(grid, row, column + 1, LVIR_BOUNDS, &cell);
    return MAKELPARAM((cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
  };
  ::SendMessageW(grid, WM_LBUTTONDOWN, MK_LBUTTON, middleOf(2, 1));
  ::SendMessageW(grid, WM_MOUSEMOVE, MK_LBUTTON, middleOf(1, 0));
  ::SendMessageW(grid, WM_LBUTTONUP, 0, middleOf(1, 0));
  EXPECT_EQ(form->preview.Selected(), (::Forms::Places{1, 0, 2, 1}));
}

TEST_F(DialogTest, AComplaintStandsBelowAndIsToldWhenAButtonWasClicked) {
  const HWND field = windowOfClass(L"Edit");
  ::SetFocus(field);
  ::SendMessageW(field, EM_SETSEL, 0, -1);
  screen.type("0");
  EXPECT_NE(screen.find("None is no order."), nullptr);
  EXPECT_EQ(screen.top(), dialog) << "no box while it is typed";
  int boxes = 0;
  // The box runs a loop of its own, within the handler of the key.
  const auto answer = screen.loop.CreateTimer([&] {
    const HWND box = screen.top();
    if (box == nullptr || box == dialog) return;
    ++boxes;
    test::press(box, IDOK);
  });
  answer->Interval(1);
  answer->Enabled(true);
  screen.press(VK_RETURN);
  while (boxes == 0) screen.loop.DoEvents();
  answer->Enabled(false);
  screen.settle();
  EXPECT_FALSE(result.has_value());
  EXPECT_EQ(::GetFocus(), field);
  ::SendMessageW(field, EM_SETSEL, 0, -1);
  screen.type("4");
  EXPECT_EQ(screen.find("None is no order."), nullptr);
  screen.press(VK_RETURN);
  EXPECT_EQ(result, ::Forms::Result::OK);
}

/// A form that shows a picture alone.
struct PhotoForm final : ::Forms::Form {
  explicit PhotoForm(const std::string& file) : Form("frmPhoto", "Photo") {
    AddRow("", {&photo});
    photo.File(file);
  }
  void CatchError() override { ADD_FAILURE(); }
  ::Forms::Picture& photo = Add<::Forms::Picture>("picPhoto");
};

TEST_F(DialogTest, APictureIsDrawnInItsProportionsAtAnyResolution) {
  form->QueryClose();
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "red.bmp";
  test::Picture red{1000, 500, {}};
  for (int i = 0; i < red.width * red.height; ++i) {
    for (const int part : {0, 0, 255, 255}) red.pixels.push_back(static_cast<std::uint8_t>(part));
  }
  test::write(red, file);
  const auto photos = std::make_shared<PhotoForm>(com::narrow(file.wstring()));
  photos->Show(::Forms::Placement::Dialog);
  screen.settle();
  dialog = screen.top();
  const auto reds = [&] {
    RECT place{};
    long width = 0;
    long height = 0;
    ::GetWindowRect(windowOfClass(L"Static"), &place);
    const test::Picture shown = test::pictureOf(windowOfClass(L"Static"));
    for (int x = 0; x < shown.width; ++x) width += test::isRed(shown, x, shown.height / 2) ? 1 : 0;
    for (int y = 0; y < shown.height; ++y) height += test::isRed(shown, shown.width / 2, y) ? 1 : 0;
    EXPECT_GT(width, shown.width * 9 / 10) << "it fills its box";
    EXPECT_NEAR(static_cast<double>(width) / static_cast<double>(height), 2, 0.1);
    return width;
  };
  const long before = reds();
  RECT place{0, 0, 900, 600};
  ::SendMessageW(dialog, 0x02E0, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
  EXPECT_NEAR(static_cast<double>(reds()) / static_cast<double>(before), 192.0 / Metrics::dpiOf(screen.host),
              0.3);
  photos->Update([&] { photos->photo.File("C:\\not there.png"); });
  EXPECT_NE(screen.find("The picture cannot be shown here."), nullptr);
  screen.press(VK_ESCAPE);
  std::filesystem::remove(file);
}

TEST_F(DialogTest, ClosesWithItsOwner) {
  ::DestroyWindow(screen.host);
  EXPECT_EQ(result, ::Forms::Result::Cancel);
  EXPECT_FALSE(form->IsShown());
}

TEST_F(DialogTest, ProgressIsShownBesideTheHost) {
  form->QueryClose();
  ProgressMeter meter;
  meter.Step();
  meter.Show("Opening", 4);
  meter.Text("Connection Today");
  meter.Step();
  meter.Step();
  dialog = screen.top();
  test::keep(test::pictureOf(dialog), "frmProgress");
  EXPECT_TRUE(::IsWindowEnabled(screen.host));
  EXPECT_NE(screen.find("Connection Today"), nullptr);
  EXPECT_EQ(::SendMessageW(windowOfClass(PROGRESS_CLASSW), PBM_GETPOS, 0, 0), 2);
  screen.press(VK_ESCAPE);
  EXPECT_TRUE(::IsWindow(dialog));
  meter.Close();
  EXPECT_FALSE(::IsWindow(dialog));
}

}  // namespace windows::forms
