// What a running show makes of its data: values, charts, slides that hide, failing sources.

#include "fakes/FakeDatabase.h"
#include "system/RuntimeShow.h"

namespace LF2000 {
namespace {

using RuntimeTest = RuntimeShow;

TEST_F(RuntimeTest, AValueFollowsItsFile) {
  fakes::Shape& shape = deck->Add().AddField("p", 1);
  Start();
  ASSERT_TRUE(IsRunning());
  EXPECT_EQ(shape.text, "3");
  machine.loop.Advance(5000);
  EXPECT_EQ(shape.writes, 1);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
  machine.files.Write(Prices, "Item\tPrice\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, " ");
  End();
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(5000);
  EXPECT_EQ(shape.text, " ");
}

TEST_F(RuntimeTest, OnlyTheSlideOnShowAndTheNextAreKeptCurrent) {
  for (int i = 0; i < 4; ++i) deck->Add().AddField("p", 1);
  Start();
  const auto texts = [&] {
    std::string all;
    for (const auto& slide : deck->slides) all += slide->shapes[0]->text + " ";
    return all;
  };
  EXPECT_EQ(texts(), "3 3 3 3 ");
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(texts(), "4 4 3 3 ");
  GoTo(4);
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(texts(), "5 4 3 5 ");
  window->position = 5;
  machine.loop.Advance(3000);
  EXPECT_EQ(LoggedErrors(), 0U);
}

TEST_F(RuntimeTest, ASlideWithoutDataHidesAndReturns) {
  machine.files.Write("/decks/alerts.txt", "Text\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tAlerts\talerts.txt\t-1\t");
  deck->Add().AddField("p", 1);
  fakes::Slide& alerts = deck->Add();
  alerts.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  alerts.AddField("a", 1, "002", "Text");
  fakes::Slide& never = deck->Add();
  never.AddField("b", 9);
  Start();
  EXPECT_TRUE(alerts.transition->hidden);
  EXPECT_FALSE(never.transition->hidden);
  machine.loop.Advance(3000);
  EXPECT_TRUE(alerts.transition->hidden);
  machine.files.Write("/decks/alerts.txt", "Text\nGate closed\n");
  machine.loop.Advance(1000);
  EXPECT_FALSE(alerts.transition->hidden);
  EXPECT_EQ(alerts.shapes[0]->text, "Gate closed");
  machine.files.Write("/decks/alerts.txt", "Text\n");
  machine.loop.Advance(1000);
  EXPECT_TRUE(alerts.transition->hidden);
}

TEST_F(RuntimeTest, AChartIsFilledWhenItsDataWereReadAndCountsAsAValue) {
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Chart& chart = slide.AddChart("chart");
  const fakes::Shape& price = slide.AddField("price", 1);
  deck->Add();
  Start();
  EXPECT_EQ(chart.fills, 1);
  machine.loop.Advance(5000);
  EXPECT_EQ(chart.fills, 1);
  EXPECT_FALSE(slide.transition->hidden);
  machine.files.Write(Prices, "Item\tPrice\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(chart.fills, 1);
  EXPECT_TRUE(slide.transition->hidden);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\nMilk\t2\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(chart.cells.rows(), 3U);
  EXPECT_FALSE(slide.transition->hidden);

  chart.fails = true;
  machine.files.Write(Prices, "Item\tPrice\nTea\t5\n");
  machine.loop.Advance(3000);
  EXPECT_EQ(LoggedErrors(), 1U);
  EXPECT_EQ(price.text, "4") << "the slide stays as it was";
  chart.fails = false;
  machine.loop.Advance(1000);
  EXPECT_EQ(chart.cells.rows(), 2U) << "what failed is tried again";
  EXPECT_EQ(price.text, "5");
}

TEST_F(RuntimeTest, AFailingSourceLeavesItsValuesIsLoggedOnceAndRecovers) {
  machine.files.Write("/decks/other.txt", "Price\n7\n");
  deck->tags->Add("CORVANE CONNECTION002", "0\tOther\tother.txt\t-1\t");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  fakes::Shape& shape = slide.AddField("p", 1);
  fakes::Shape& other = slide.AddField("o", 1, "002");
  Start();
  const auto good = machine.files.files[Prices];
  machine.files.files.erase(Prices);
  machine.files.Write("/decks/other.txt", "Price\n8\n");
  machine.loop.Advance(60'000);
  EXPECT_EQ(shape.text, "3");
  EXPECT_EQ(other.text, "8");
  EXPECT_FALSE(slide.transition->hidden);
  EXPECT_EQ(LoggedErrors(), 2U);  // one line whose text has a line break of its own
  machine.files.files[Prices] = good;
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
  EXPECT_EQ(LoggedErrors(), 3U) << "the recovery is a line as well";
  machine.files.files.erase(Prices);
  machine.loop.Advance(5000);
  EXPECT_EQ(LoggedErrors(), 5U);
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

TEST_F(RuntimeTest, ASourceThatIsMissingAtTheStartIsTakenUpLater) {
  fakes::Shape& shape = deck->Add().AddField("p", 1);
  shape.text = "before";
  machine.files.files.clear();
  Start();
  ASSERT_TRUE(IsRunning());
  EXPECT_EQ(shape.text, "before");
  EXPECT_GT(LoggedErrors(), 0U);
  machine.files.Write(Prices, "Item\tPrice\nTea\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(shape.text, "4");
}

TEST_F(RuntimeTest, WhatIsOutOfBoundsIsSkipped) {
  deck->tags->Add("CORVANE CONNECTION1000", "0\tFar\tgone.txt\t-1\t");
  deck->tags->Add("CORVANE CONNECTIONX", "0\tOdd\tgone.txt\t-1\t");
  deck->tags->Add("CORVANE CONNECTION003", "zero");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "nonsense");
  fakes::Shape& far = slide.AddField("far", 1, "1000");
  fakes::Shape& odd = slide.AddField("odd", 1, "abc");
  fakes::Shape& good = slide.AddField("good", 1);
  fakes::Shape& twin = slide.AddField("good", 1, "001", "Item");
  Start();
  ASSERT_TRUE(IsRunning());
  EXPECT_EQ(good.text, "3");
  EXPECT_EQ(twin.text, "");
  EXPECT_NE(ErrorLog().find("two linked shapes named 'good'"), std::string::npos);
  EXPECT_EQ(far.text + odd.text, "");
}

TEST_F(RuntimeTest, SlidesBeyondTheRangeOfTheirNumberAreReportedOnce) {
  deck->Add().AddField("p", 1);
  Start();
  for (const std::int32_t slide : {32768, 40000, 65537}) Runtime().Form()->RefreshSlideAt(slide);
  EXPECT_EQ(LoggedErrors(), 1U);
  EXPECT_NE(ErrorLog().find("Slides after number 32767"), std::string::npos);
}

TEST_F(RuntimeTest, NullHasNoValueAndAnEmptyTextHas) {
  machine.files.Write(Prices, "Item\tPrice\nTea\t\nMilk\n");
  fakes::Slide& slide = deck->Add();
  slide.tags->Add("CORVANE SLIDE PROPERTIES", "-1\t0\t");
  const std::pair<const char*, int> shapes[] = {{"empty", 1}, {"null", 2}, {"no row", 3}};
  for (const auto& [name, row] : shapes) slide.AddField(name, row);
  Start();
  for (const auto& [name, row] : shapes) {
    EXPECT_EQ(Runtime().Form()->HasValue(1, name), row == 1) << name;
    EXPECT_EQ(slide.Item(std::string_view(name))->TextFrame()->TextRange()->Text(), " ") << name;
  }
  EXPECT_TRUE(slide.transition->hidden) << "nothing to see is no data";
}

TEST_F(RuntimeTest, AnErrorOnOneShapeLeavesItsSlideAsItWas) {
  fakes::Slide& board = deck->Add();
  fakes::Shape& price = board.AddField("price", 1);
  fakes::Shape& item = board.AddField("item", 1, "001", "Item");
  fakes::Shape& chart = board.AddField("chart", 0, "001", "", 4);
  chart.chart = std::make_shared<fakes::Chart>();
  const fakes::Shape& elsewhere = deck->Add().AddField("price", 1);
  Start();
  const auto texts = [&] { return price.text + " " + item.text + " " + elsewhere.text; };
  EXPECT_EQ(texts(), "3 Tea 3");

  machine.files.Write(Prices, "Goods\tPrice\nMilk\t4\n");
  machine.loop.Advance(10'000);
  EXPECT_EQ(texts(), "3 Tea 4");
  EXPECT_EQ(chart.chart->fills, 1);
  ASSERT_EQ(Runtime().Form()->StandingSlides().size(), 1U);
  EXPECT_NE(Runtime().Form()->StandingSlides().at(1).Error.find("column Item"), std::string::npos);
  const clsConnection& connection = *Runtime().Form()->Connections().at("001");
  EXPECT_TRUE(connection.Readings().IsFailing);
  EXPECT_NE(connection.Readings().LastError.find("no column 'Item'"), std::string::npos);
  for (const char* line : {"no column 'Item'", "column Item of row"}) {
    EXPECT_NE(ErrorLog().find(line), std::string::npos) << line;
    EXPECT_EQ(ErrorLog().find(line), ErrorLog().rfind(line)) << line;
  }

  machine.files.Write(Prices, "item\tPrice\nMilk\t4\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(texts(), "4 Milk 4");
  EXPECT_EQ(chart.chart->fills, 2);
  EXPECT_TRUE(Runtime().Form()->StandingSlides().empty());
  for (const char* line : {"Recovered: slide 1.", "Recovered: connection 001 (Prices)."}) {
    EXPECT_NE(ErrorLog().find(line), std::string::npos) << line;
  }
  const std::size_t lines = LoggedErrors();
  machine.loop.Advance(10'000);
  EXPECT_EQ(LoggedErrors(), lines);
}

TEST_F(RuntimeTest, AColumnThatIsMissingFromTheStartKeepsItsSlideAlone) {
  const fakes::Shape& good = deck->Add().AddField("good", 1);
  const fakes::Shape& bad = deck->Add().AddField("bad", 1, "001", "Colour");
  Start();
  machine.loop.Advance(3000);
  EXPECT_EQ(good.text, "3");
  EXPECT_EQ(bad.text, "");
  EXPECT_EQ(Runtime().Form()->Connections().at("001")->Readings().Deliveries, 0U);
  machine.files.Write(Prices, "Price\tColour\n3\tgreen\n");
  machine.loop.Advance(1000);
  EXPECT_EQ(bad.text, "green");
  EXPECT_NE(ErrorLog().find("Recovered: connection 001"), std::string::npos);
}

TEST_F(RuntimeTest, AChartFollowsItsDatabase) {
  fakes::Database database;
  database.rows = {{"Tea", "3"}};
  machine.UseAdo(&database);
  deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "1\tStock\tDSN=x\tt\t\t1000\t"}};
  fakes::Chart& chart = deck->Add().AddChart("chart");
  machine.loop.lateness = 8;
  Start();
  ASSERT_EQ(chart.cells.rows(), 2U);
  database.rows.emplace_back("Milk", "2");
  machine.loop.Advance(2000);
  EXPECT_EQ(chart.cells.rows(), 3U);
}

}  // namespace
}  // namespace LF2000
