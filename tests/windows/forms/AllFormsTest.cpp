// Every form of the system as a dialog: nothing cut or covered, keys that lead where they say, and ways out.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <string>

#include "windows/forms/FormDeck.h"
#include "windows/forms/Metrics.h"
#include "windows/forms/PictureFile.h"

namespace windows::forms {

namespace {

bool isTabStop(HWND window) { return (::GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) != 0; }

bool overlap(const RECT& one, const RECT& other) {
  RECT common{};
  return ::IntersectRect(&common, &one, &other) != 0;
}

bool isGroupBox(HWND window) {
  return test::classOf(window) == L"Button" &&
         (::GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

void expectNothingCut(HWND dialog, const Metrics& metrics) {
  RECT inner{};
  ::GetClientRect(dialog, &inner);
  const std::vector<HWND> windows = test::visibleWindows(dialog);
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const std::string text = test::textOf(windows[i]);
    const RECT place = test::placeOf(windows[i], dialog);
    RECT within{};
    ::IntersectRect(&within, &place, &inner);
    EXPECT_TRUE(::EqualRect(&within, &place)) << "'" << text << "' leaves the dialog";
    const bool isNote = test::classOf(windows[i]) == L"Static" &&
                        (::GetWindowLongW(windows[i], GWL_STYLE) & SS_NOPREFIX) != 0;
    if (isNote) {
      const int width = place.right - place.left;
      EXPECT_GE(place.bottom - place.top, metrics.height(com::wide(text), width))
          << "'" << text << "' is cut";
    } else if (test::classOf(windows[i]) == L"Button" || test::classOf(windows[i]) == L"Static") {
      EXPECT_GE(place.right - place.left, metrics.width(com::wide(text))) << "'" << text << "' is cut";
    }
    if (isGroupBox(windows[i])) continue;
    for (std::size_t j = i + 1; j < windows.size(); ++j) {
      // The closed list of a combo box counts its open list.
      if (isGroupBox(windows[j])) continue;
      EXPECT_FALSE(overlap(place, test::placeOf(windows[j], dialog)))
          << "'" << text << "' and '" << test::textOf(windows[j]) << "' lie on one another";
    }
  }
}

void expectKeysDiffer(HWND dialog) {
  std::set<wchar_t> keys;
  for (const HWND each : test::visibleWindows(dialog)) {
    const bool hasKey =
        test::classOf(each) == L"Button" ||
        (test::classOf(each) == L"Static" && (::GetWindowLongW(each, GWL_STYLE) & SS_NOPREFIX) == 0);
    const std::wstring text = com::wide(test::textOf(each));
    const std::size_t mark = text.find(L'&');
    if (!hasKey || mark == std::wstring::npos || mark + 1 == text.size()) continue;
    const auto upper =
        reinterpret_cast<LONG_PTR>(::CharUpperW(reinterpret_cast<LPWSTR>(LONG_PTR{text[mark + 1]})));
    EXPECT_TRUE(keys.insert(static_cast<wchar_t>(upper)).second) << test::textOf(each);
  }
}

void expectTabGoesRound(HWND dialog) {
  const HWND first = ::GetNextDlgTabItem(dialog, nullptr, FALSE);
  std::set<HWND> seen;
  for (HWND at = first; at != nullptr && seen.insert(at).second;) at = ::GetNextDlgTabItem(dialog, at, FALSE);
  for (const HWND each : test::visibleWindows(dialog)) {
    if (!isTabStop(each) || !::IsWindowEnabled(each)) continue;
    EXPECT_EQ(seen.count(each), 1U) << test::textOf(each);
  }
}

SIZE sizeOf(HWND window) {
  RECT place{};
  ::GetClientRect(window, &place);
  return {place.right, place.bottom};
}

/// It is moved to a screen of another resolution, and back.
void expectFollowsTheResolution(HWND dialog) {
  constexpr UINT ResolutionMessage = 0x02E0;  // WM_DPICHANGED, of Windows 8.1
  const unsigned own = Metrics::dpiOf(dialog);
  const auto moveTo = [&](unsigned dpi) {
    RECT place{10, 10, 600, 600};
    ::SendMessageW(dialog, ResolutionMessage, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
  };
  const SIZE before = sizeOf(dialog);
  moveTo(own * 3 / 2);
  const SIZE after = sizeOf(dialog);
  const Metrics coarse(own);
  const Metrics fine(own * 3 / 2);
  constexpr int Width = 1000;
  EXPECT_NEAR(static_cast<double>(after.cx) / before.cx, static_cast<double>(fine.x(Width)) / coarse.x(Width),
              0.02);
  expectNothingCut(dialog, fine);
  moveTo(own);
  EXPECT_EQ(sizeOf(dialog).cx, before.cx);
  EXPECT_EQ(sizeOf(dialog).cy, before.cy);
}

/// Means of a picture's cells, row by row, from 0 for black to 255 for white: what of it does not depend on
/// the font that happens to be there.
constexpr int CellColumns = 24;
constexpr int CellRows = 32;
std::vector<double> cellsOf(const test::Picture& picture) {
  std::vector<double> sums(CellColumns * CellRows);
  std::vector<double> counts(CellColumns * CellRows);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const auto cell = static_cast<std::size_t>(y * CellRows / picture.height * CellColumns +
                                                 x * CellColumns / picture.width);
      const auto pixel = static_cast<std::size_t>(y * picture.width + x) * 4;
      sums[cell] += (picture.pixels[pixel] + picture.pixels[pixel + 1] + picture.pixels[pixel + 2]) / 3.0;
      ++counts[cell];
    }
  }
  for (std::size_t i = 0; i < sums.size(); ++i) sums[i] /= counts[i];
  return sums;
}

test::Picture pictureOfFile(const std::string& path) {
  constexpr int Any = 4000;
  const HBITMAP bitmap = pictureFile(path, Any, Any);
  DIBSECTION section{};
  if (bitmap == nullptr || ::GetObjectW(bitmap, sizeof section, &section) == 0) return {};
  const auto* pixels = static_cast<const std::uint8_t*>(section.dsBm.bmBits);
  test::Picture picture{section.dsBm.bmWidth, section.dsBm.bmHeight, {}};
  picture.pixels.assign(pixels, pixels + std::ptrdiff_t{4} * picture.width * picture.height);
  ::DeleteObject(bitmap);
  return picture;
}

}  // namespace

TEST(FormPictureTest, AFormLooksAsItDid) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  test::FormDeck deck;
  deck.open("frmSlide");
  deck.screen.settle();
  const test::Picture now = test::pictureOf(deck.screen.top());
  const test::Picture then = pictureOfFile(LUMENFOLD_TEST_FOLDER "/frmSlide.png");
  ASSERT_GT(then.width, 0);
  EXPECT_NEAR(now.width, then.width, then.width / 8);
  EXPECT_NEAR(now.height, then.height, then.height / 8);
  const std::vector<double> present = cellsOf(now);
  const std::vector<double> former = cellsOf(then);
  double difference = 0;
  for (std::size_t i = 0; i < present.size(); ++i) difference += std::abs(present[i] - former[i]);
  constexpr double Tolerated = 6;
  EXPECT_LT(difference / static_cast<double>(present.size()), Tolerated);
  deck.screen.press(VK_ESCAPE);
  ::CoUninitialize();
}

struct AllFormsTest : testing::TestWithParam<const char*> {};

TEST_P(AllFormsTest, StandsWellAndGoesByEsc) {
  test::FormDeck deck;
  deck.open(GetParam());
  deck.screen.settle();
  const HWND dialog = deck.screen.top();
  ASSERT_NE(dialog, nullptr);
  ASSERT_EQ(deck.told.shown->Name(), GetParam());
  EXPECT_TRUE(test::textOf(dialog).starts_with(deck.told.shown->Caption()));
  EXPECT_FALSE(::IsWindowEnabled(deck.screen.host));
  test::keep(test::pictureOf(dialog), GetParam());
  expectNothingCut(dialog, Metrics(Metrics::dpiOf(dialog)));
  expectKeysDiffer(dialog);
  expectTabGoesRound(dialog);
  if (const auto* button = deck.told.shown->DefaultButton()) {
    const auto id = ::SendMessageW(dialog, DM_GETDEFID, 0, 0);
    EXPECT_EQ(test::textOf(::GetDlgItem(dialog, LOWORD(id))), button->Caption());
  }
  EXPECT_TRUE(::IsChild(dialog, ::GetFocus()));
  expectFollowsTheResolution(dialog);
  deck.screen.press(VK_ESCAPE);
  EXPECT_FALSE(::IsWindow(dialog));
  EXPECT_TRUE(deck.told.result.has_value());
  EXPECT_FALSE(deck.told.shown->IsShown());
  EXPECT_TRUE(::IsWindowEnabled(deck.screen.host));
}

INSTANTIATE_TEST_SUITE_P(Forms, AllFormsTest,
                         testing::Values("frmAbout", "frmClock", "frmDataField", "frmDataObject",
                                         "frmDatabaseConnection", "frmDistribution", "frmExcelConnection",
                                         "frmFillWithRows", "frmGraph", "frmLinkByNames", "frmNotLinkable",
                                         "frmOfflineCopy", "frmSlide", "frmSlideShow", "frmTextConnection"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace windows::forms
