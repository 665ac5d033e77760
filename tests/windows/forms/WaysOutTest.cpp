// Every form filled in on the screen, and left by OK, which stores what was said, and by Cancel, which does
// not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

#include "fakes/FakeExcel.h"
#include "model/modOfflineCopy.h"
#include "windows/forms/FormDeck.h"

namespace windows::forms {

namespace {

using test::FormDeck;
using testing::HasSubstr;

struct Way {
  const char* form;
  std::function<void(FormDeck&)> say;
  const char* stored;
};
void PrintTo(const Way& way, std::ostream* out) { *out << way.form; }

const std::vector<Way> Ways = {
    {"frmClock", [](FormDeck& deck) { deck.screen.fill("&Format", "dddd"); }, "p1 Price: 1 dddd\n"},
    {"frmDataField", [](FormDeck& deck) { deck.screen.fill("&Row", "3"); }, "p1 Price: 2 001 Price 3\n"},
    {"frmDataObject",
     [](FormDeck& deck) {
       deck.screen.fill("C&olumn", "Item");
       deck.screen.fill("&Folder", "photos");
       deck.screen.fill("&Extension", "png");
     },
     "Photo: 3 001 Item 1 photos png\n"},
    {"frmDatabaseConnection",
     [](FormDeck& deck) {
       deck.screen.fill("&Description", "Stock");
       deck.screen.fill("Connection &string", "DSN=shop");
       deck.screen.fill("Statement &or table", "Prices");
       deck.screen.fill("R&efresh rate", "5000");
     },
     "CONNECTION003=1|Stock|DSN=shop|Prices||5000|\n"},
    {"frmDistribution", [](FormDeck& deck) { deck.screen.fill("&Days", "mon-fri"); },
     "CORVANE DISTRIBUTION DAYS=mon-fri\n"},
    {"frmExcelConnection",
     [](FormDeck& deck) {
       deck.screen.fill("&File", "prices.xlsx");
       deck.screen.fill("&Sheet", "Offer");
       deck.screen.fill("R&ange", "A1:B9");
       deck.screen.click("First &row");
     },
     "CONNECTION003=2|prices|prices.xlsx|Offer|-1|A1:B9|\n"},
    {"frmFillWithRows", [](FormDeck& deck) { deck.screen.fill("&Step", "0"); }, "p2 Item: 2 001 Price 1\n"},
    {"frmGraph", [](FormDeck& deck) { deck.screen.choose("&Connection", "002"); }, "Chart 1: 4 002\n"},
    {"frmLinkByNames", [](FormDeck&) {}, "Price 2: 2 001 Price 2\nItem 3: 2 001 Item 3\n"},
    {"frmSlide", [](FormDeck& deck) { deck.screen.click("&Hide when no data"); }, "slide CORVANE"},
    {"frmTextConnection",
     [](FormDeck& deck) {
       deck.screen.fill("&File", "offer.txt");
       deck.screen.fill("&Description", "Cakes");
     },
     "CONNECTION003=0|Cakes|offer.txt|-1|\n"},
};

struct WaysOutTest : testing::TestWithParam<Way> {
  WaysOutTest() {
    deck.machine.UseExcel(&excel);
    deck.machine.files.Write("/decks/prices.xlsx", "");
    excel.sheets = {{"Offer", {{{"Item"}, {"Price"}}, {{"Rye"}, {"4.80"}}}}};
    deck.open(GetParam().form);
    deck.screen.settle();
    before = deck.stored();
    GetParam().say(deck);
  }
  fakes::ExcelProgram excel;
  FormDeck deck;
  std::string before;
};

}  // namespace

TEST_P(WaysOutTest, OKStoresWhatWasSaid) {
  EXPECT_THAT(before, Not(HasSubstr(GetParam().stored)));
  deck.screen.click("OK");
  EXPECT_EQ(deck.told.result, ::Forms::Result::OK);
  EXPECT_THAT(deck.stored(), HasSubstr(GetParam().stored));
  EXPECT_TRUE(deck.screen.isEmpty());
}

TEST_P(WaysOutTest, CancelStoresNothing) {
  deck.screen.click("Cancel");
  EXPECT_EQ(deck.told.result, ::Forms::Result::Cancel);
  EXPECT_EQ(deck.stored(), before);
  EXPECT_TRUE(deck.screen.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Forms, WaysOutTest, testing::ValuesIn(Ways),
                         [](const auto& tested) { return std::string(tested.param.form); });

TEST(WayOutTest, AboutGivesItsTextsAway) {
  FormDeck deck;
  deck.open("frmAbout");
  deck.screen.settle();
  deck.screen.click("&Copy");
  ASSERT_TRUE(::OpenClipboard(deck.screen.host));
  const HANDLE copied = ::GetClipboardData(CF_UNICODETEXT);
  ASSERT_NE(copied, nullptr);
  EXPECT_THAT(com::narrow(static_cast<const wchar_t*>(::GlobalLock(copied))),
              HasSubstr("Computer: GATE7\r\n"));
  ::GlobalUnlock(copied);
  ::CloseClipboard();
  deck.screen.click("OK");
  EXPECT_EQ(deck.told.result, ::Forms::Result::OK);
}

TEST(WayOutTest, AShapeThatSharesItsNameIsRenamed) {
  FormDeck deck;
  deck.open("frmNotLinkable");
  deck.screen.settle();
  ASSERT_EQ(deck.told.shown->Name(), "frmNotLinkable");
  deck.screen.fill("&New name", "Arrow");
  deck.screen.click("&Rename");
  EXPECT_EQ(deck.slide.shapes.back()->name, "Arrow");
  EXPECT_NE(deck.screen.find("'Arrow' (text box) can be linked now."), nullptr);
  EXPECT_EQ(deck.screen.find("&Rename"), nullptr);
  deck.screen.click("Close");
  EXPECT_TRUE(deck.screen.isEmpty());
}

TEST(WayOutTest, AnOfflineCopyIsMadeOnOKAlone) {
  std::vector<std::string> made;
  LF2000::modOfflineCopy::MadeBy([&](const auto& files, const auto&) {
    made.push_back(files.Copy);
    return std::vector<std::string>();
  });
  for (const char* button : {"Cancel", "OK"}) {
    EXPECT_THAT(made, testing::IsEmpty());
    FormDeck deck;
    deck.open("frmOfflineCopy");
    deck.screen.settle();
    deck.screen.fill("&File", "copy.pptx");
    deck.screen.click(button);
    EXPECT_TRUE(deck.screen.isEmpty());
  }
  EXPECT_THAT(made, testing::ElementsAre("/decks/copy.pptx"));
  LF2000::modOfflineCopy::MadeBy({});
}

TEST(WayOutTest, TheSlideShowsPropertiesAreKeptAtOnce) {
  FormDeck deck;
  deck.open("frmSlideShow");
  deck.screen.settle();
  deck.screen.choose("S&hapes show", "Connection");
  EXPECT_EQ(deck.presentation->DisplayType(), 2);
  deck.screen.click("Close");
  EXPECT_EQ(deck.told.result, ::Forms::Result::OK);
  EXPECT_EQ(deck.presentation->DisplayType(), 2);
}

}  // namespace windows::forms
