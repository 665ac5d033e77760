// Off-line copies: what a show that began now would show, in a presentation of its own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "addin/support/modGlobalFunctions.h"
#include "fakes/FakeFormView.h"
#include "model/modClockFormat.h"
#include "model/modOfflineLinks.h"
#include "runtime/OfflinePages.h"
#include "system/EditedDeck.h"

namespace LF2000 {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* Copy = "/copies/board.pptx";

struct OfflineTest : EditedDeck {
  fakes::FormView view;
  fakes::FormUser* user = fakes::handed(&view);

  OfflineTest() {
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\nMilk\t2\nRye\t5\nOat\t4\nBun\t1\n");
    deck->disk = &host->disk;
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "3"},
                         {"MINE", "stays"}};
    machine.UseForms(&view);
  }
  /// As its author asks for it. Whether it was written.
  bool Create(bool keepsClocks = false) {
    Open();
    machine.messageBox.shown.clear();
    host->disk.erase(Copy);
    Press("cbrOfflineCopy");
    EXPECT_EQ(user->TopName(), "frmOfflineCopy");
    EXPECT_EQ(user->Set("txtFile", Copy), "");
    EXPECT_EQ(user->Check("chkKeepClocks", keepsClocks), "");
    EXPECT_EQ(user->Click("cmdOK"), "");
    EXPECT_EQ(user->TopName(), "(none)");
    EXPECT_EQ(host->openCount, 1);
    return Written() != nullptr;
  }
  /// Null where none was written.
  std::shared_ptr<fakes::Presentation> Written() { return host->disk[Copy]; }
  /// The text of the first shape of each slide.
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const auto& slide : Written()->slides) texts.push_back(slide->shapes.front()->text);
    return texts;
  }
  /// A slide of a row that hides without data and scrolls: two rows every three seconds.
  fakes::Slide& AddScrolling() {
    fakes::Slide& slide = deck->Add();
    slide.AddField("1", 1, "001", "Item");
    slide.tags->items = {{"CORVANE SLIDE PROPERTIES", "-1\t0\t"}, {"CORVANE SCROLLSTEP1", "True\t2\t3000"}};
    return slide;
  }
};

TEST_F(OfflineTest, HoldsTheValuesAndNothingOfWhereTheyCameFrom) {
  machine.files.Write("/decks/pictures/Tea.png", "picture");
  fakes::Slide& slide = deck->Add();
  slide.AddField("p", 2);
  slide.AddClock("hh:nn");
  slide.AddField("photo", 1, "001", "Item", 3)
      .tags->items.insert(
          slide.shapes.back()->tags->items.end(),
          {{"CORVANE COLUMN OBJECT FOLDER", "/decks/pictures"}, {"CORVANE COLUMN OBJECT EXTESION", "png"}});
  slide.AddChart("chart");
  slide.AddTable("table", "Item|Price/a|b/c|d");
  slide.AddLinked("/decks/book.xlsx!Sheet1");
  slide.Add("free").text = "mine";
  slide.AddField("beyond", 99);
  EXPECT_TRUE(Create());

  const auto copy = Written();
  ASSERT_NE(copy, nullptr);
  const auto& shapes = copy->slides.at(0)->shapes;
  EXPECT_EQ(shapes[0]->text, "2");
  EXPECT_EQ(shapes[1]->text, "12:00");
  EXPECT_EQ(shapes[2]->shownFile, "/decks/pictures/Tea.png");
  EXPECT_EQ(shapes[3]->chart->cells.rows(), 6U);
  EXPECT_EQ(shapes[4]->table->Cells(), "Item|Price/Tea|3/Milk|2");
  EXPECT_EQ(shapes[5]->linkSource, "");
  EXPECT_EQ(shapes[6]->text, "mine");
  EXPECT_EQ(shapes[7]->text, " ");  // and no marker
  for (const auto& shape : shapes) EXPECT_THAT(shape->tags->items, IsEmpty()) << shape->name;
  EXPECT_THAT(copy->tags->items, ElementsAre(testing::Pair("MINE", "stays")));

  // The deck goes on showing what its author looks at.
  EXPECT_EQ(slide.shapes[0]->text, "Price");
  EXPECT_TRUE(deck->saved);
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Off-line presentation is ready.");
  EXPECT_EQ(machine.messageBox.shown[0].style, host::vbInformation);
  machine.settings.info["HideMsgBoxOfflineGeneration"] = "1";
  EXPECT_TRUE(Create());
  EXPECT_THAT(machine.messageBox.shown, IsEmpty());
}

TEST_F(OfflineTest, AChartWithItsDataElsewhereIsFreedOfThem) {
  deck->Add().AddChart("chart").isLinked = true;
  EXPECT_TRUE(Create());
  const auto& chart = Written()->slides.at(0)->shapes[0]->chart;
  EXPECT_EQ(chart->cells.rows(), 6U);
  EXPECT_FALSE(chart->isLinked);
}

TEST_F(OfflineTest, FilmsStayOutsideAndArePointedOut) {
  fakes::Slide& slide = deck->Add();
  slide.AddField("p", 2);
  slide.Add("own film").type = PowerPoint::ShapeType::Media;
  slide.AddLinked("/films/harbour.mp4", PowerPoint::ShapeType::Media);
  std::string original;
  modOfflineLinks::DoneBy(
      {{}, [&](const std::shared_ptr<PowerPoint::Presentation>&, const std::string& name) {
         original = name;
         return std::vector<std::string>{"wall.png cannot be read."};
       }});
  EXPECT_TRUE(Create());
  modOfflineLinks::DoneBy({});
  EXPECT_EQ(original, "/decks/board.pptx");
  EXPECT_EQ(Written()->slides[0]->shapes[2]->linkSource, "/films/harbour.mp4");
  ASSERT_EQ(machine.messageBox.shown.size(), 3U);
  EXPECT_THAT(machine.messageBox.shown[0].text, HasSubstr("wall.png cannot be read."));
  EXPECT_EQ(machine.messageBox.shown[1].text,
            "Slide 1 plays /films/harbour.mp4, which stays outside of the copy.");
  EXPECT_EQ(machine.messageBox.shown[1].style, host::vbInformation);
}

TEST_F(OfflineTest, AScrollingSlideComesAsOftenAsItsRowsNeed) {
  deck->Add().AddField("before", 1, "001", "Item");
  AddScrolling();
  deck->Add().AddField("after", 5, "001", "Item");
  deck->namedShows->items.push_back(std::make_shared<fakes::NamedShow>());
  deck->namedShows->items[0]->ids = {258, 257};
  deck->rangeType = PowerPoint::SlideShowRangeType::ShowSlideRange;
  deck->startingSlide = 2;
  deck->endingSlide = 3;
  EXPECT_TRUE(Create());
  EXPECT_THAT(Texts(), ElementsAre("Tea", "Tea", "Rye", "Bun", "Bun"));
  const auto copy = Written();
  std::vector<std::int32_t> ids;
  std::vector<std::optional<double>> seconds;
  std::vector<bool> effects;
  for (const auto& slide : copy->slides) {
    ids.push_back(slide->id);
    seconds.push_back(slide->transition->seconds);
    effects.push_back(slide->transition->hasEffect && !slide->timeLine->isDeleted);
  }
  // The last page waits for a click, as the slide does.
  EXPECT_THAT(seconds, ElementsAre(std::nullopt, 3.0, 3.0, std::nullopt, std::nullopt));
  EXPECT_THAT(effects, ElementsAre(true, true, false, false, true));
  EXPECT_THAT(copy->namedShows->items[0]->ids, ElementsAre(ids[4], ids[1], ids[2], ids[3]));
  EXPECT_EQ(copy->startingSlide, 2);
  EXPECT_EQ(copy->endingSlide, 5);
  EXPECT_EQ(deck->Count(), 3);
}

TEST_F(OfflineTest, TimingsOfTheSlideDecide) {
  AddScrolling().transition->seconds = 3;
  EXPECT_TRUE(Create());
  EXPECT_THAT(Texts(), ElementsAre("Tea"));  // it makes way before its first step
  EXPECT_EQ(Written()->slides[0]->transition->seconds, 3);
  deck->slides[0]->transition->seconds = 10;
  EXPECT_TRUE(Create());
  EXPECT_EQ(Written()->Count(), 3);
  EXPECT_EQ(Written()->slides[2]->transition->seconds, 3);
  deck->slides[0]->transition->seconds.reset();  // alone, it comes round
  EXPECT_TRUE(Create());
  EXPECT_EQ(Written()->slides[2]->transition->seconds, 3);
}

TEST_F(OfflineTest, WithoutDataASlideIsLeftOutAndWithoutItsSourceItStays) {
  machine.files.Write("/decks/prices.txt", "Item\tPrice\n");
  AddScrolling();
  deck->Add().AddField("p", 1);
  deck->Add().AddField("gone", 1, "002");
  deck->slides[2]->tags->items = {{"CORVANE SLIDE PROPERTIES", "-1\t0\t"}};
  deck->slides[2]->shapes[0]->text = "old";
  deck->tags->Add("CORVANE CONNECTION002", "0\tGone\tgone.txt\t-1\t");
  deck->namedShows->items.push_back(std::make_shared<fakes::NamedShow>());
  deck->namedShows->items[0]->ids = {256, 258};
  deck->rangeType = PowerPoint::SlideShowRangeType::ShowSlideRange;
  EXPECT_TRUE(Create());
  EXPECT_THAT(Texts(), ElementsAre(" ", " "));
  EXPECT_THAT(Written()->namedShows->items[0]->ids, ElementsAre(258));
  EXPECT_EQ(Written()->rangeType, PowerPoint::SlideShowRangeType::ShowAll);
  ASSERT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_THAT(machine.messageBox.shown[0].text, HasSubstr("gone.txt"));

  host->disk.clear();
  deck->Remove(*deck->slides[2]);
  deck->Remove(*deck->slides[1]);
  EXPECT_FALSE(Create());
  EXPECT_EQ(Written(), nullptr);
  EXPECT_THAT(machine.messageBox.shown.back().text,
              HasSubstr("Error while creating off-line presentation. \r\nNo slide has data"));
}

TEST_F(OfflineTest, NothingIsWrittenWhenItFails) {
  deck->Add().AddField("p", 1);
  deck->disk = nullptr;  // so that what is to become the copy is not there
  EXPECT_FALSE(Create());
  EXPECT_THAT(machine.messageBox.shown.at(0).text, HasSubstr("Error while creating off-line presentation."));
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "Price");
}

TEST_F(OfflineTest, NothingIsWrittenWhenItIsCancelled) {
  for (int i = 0; i < 3; ++i) deck->Add().AddField("p", 1);
  Open();
  clsPresentation& linked = *fakes::inside(*addIn)->Find(handed(deck));
  int asked = 0;
  modOfflineCopy::Options options;
  options.IsCancelled = [&] {
    EXPECT_TRUE(modGlobalFunctions::OfflineGenerationActive);
    return ++asked == 2;
  };
  EXPECT_FALSE(linked.CreateOfflinePPT(Copy, options));
  EXPECT_FALSE(modGlobalFunctions::OfflineGenerationActive);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(Written(), nullptr);
  EXPECT_THAT(machine.messageBox.shown, IsEmpty());
  EXPECT_EQ(machine.meter.log.back(), "close");

  EXPECT_FALSE(linked.CreateOfflinePPT(deck->fullName));
  EXPECT_THAT(machine.messageBox.shown.at(0).text, HasSubstr("is the presentation itself"));
  EXPECT_FALSE(host->disk.contains(deck->fullName));
}

TEST_F(OfflineTest, ClocksGoOnWhenTheyAreKept) {
  fakes::Slide& slide = deck->Add();
  slide.AddClock("hh:nn:ss");
  EXPECT_TRUE(Create(/*keepsClocks=*/true));
  EXPECT_THAT(Texts(), ElementsAre("field hh:nn:ss"));
}

TEST(ClockFields, SayWhatTheFormatsOfClocksSay) {
  using PowerPoint::DateTimeFormat;
  const auto field = modClockFormat::FieldFor;
  EXPECT_EQ(field("m/d/yyyy"), DateTimeFormat::Mdyy);
  EXPECT_EQ(field("h:nn AM/PM"), DateTimeFormat::hmmAMPM);
  EXPECT_EQ(field("dddd hh:nn"), DateTimeFormat::MMddyyHmm);
  EXPECT_EQ(field("n:ss"), DateTimeFormat::Hmmss);
  EXPECT_EQ(field("dd.mm."), DateTimeFormat::Mdyy);
  EXPECT_EQ(field("\"closed\""), std::nullopt);
}

TEST(OfflinePages, EntriesOfSeveralTimesShareTheirPages) {
  const auto scroll = [](std::int32_t step, std::int32_t time, double lastRow) {
    clsRTScrollInfo info;
    info.Step = step;
    info.Time = time;
    info.FirstRow = 1;
    info.LastRow = lastRow;
    return info;
  };
  std::string text;
  for (const OfflinePage& page : OfflinePagesOf({scroll(1, 2000, 1), scroll(2, 3000, 2)}, {2, 6})) {
    text += std::to_string(page.Steps[0]) + "," + std::to_string(page.Steps[1]) + " for " +
            std::to_string(static_cast<int>(page.Milliseconds)) + "; ";
  }
  EXPECT_EQ(text, "0,0 for 2000; 1,0 for 1000; 1,1 for 1000; 0,1 for 2000; 1,2 for 2000; 0,2 for 1000; ");
  EXPECT_EQ(OfflinePagesOf({scroll(1, 1000, 1)}, {0}).size(), 1U);
  EXPECT_EQ(OfflinePagesOf({}, {}).at(0).Milliseconds, 0);
  EXPECT_EQ(OfflinePagesOf({scroll(1, 20, 1)}, {1e9}).size(), MostOfflinePages);
}

}  // namespace
}  // namespace LF2000
