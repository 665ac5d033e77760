// The dialogs for many links at once: what they plan, what they say about it, what OK does.

#include <gmock/gmock.h>

#include "pages/OpenDeck.h"

namespace LF2000 {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct ManyShapesTest : OpenDeck {
  /// "shape: column row value" of each line.
  std::vector<std::string> Planned() const {
    std::vector<std::string> lines;
    for (const Forms::Item& item : view.Get<Forms::ListBox>("lstPlan").Items()) {
      lines.push_back(item.Text + ": " + item.Cells[0] + " " + item.Cells[1] + " " + item.Cells[2]);
    }
    return lines;
  }
  void OpenFill(std::vector<std::shared_ptr<PowerPoint::Shape>> shapes) {
    window->shapes = std::move(shapes);
    modPages::OpenFillWithRows(presentation);
  }
  void OpenNames(std::vector<std::shared_ptr<PowerPoint::Shape>> shapes) {
    window->shapes = std::move(shapes);
    modPages::OpenLinkByNames(presentation);
  }
};

TEST_F(ManyShapesTest, RowsArePlannedShownAndLinkedInOneStep) {
  const auto first = AddField("x", 1);
  const auto second = Add("y", 0, 25);
  OpenFill({second, first});
  EXPECT_EQ(view.Text("cmbConnection"), "001 Today");
  EXPECT_THAT(Planned(), ElementsAre("x: Price 1 4.80", "y: Price 2 4.10"));
  view.Set("txtStart", "3");
  view.Set("txtStep", "-1");
  EXPECT_THAT(Planned(), ElementsAre("x: Price 3 3.20", "y: Price 2 4.10"));
  view.Choose("cmbConnection", "002 Offer");
  EXPECT_THAT(Planned(), ElementsAre(HasSubstr("x: PRICE 3"), HasSubstr("y: PRICE 2")))
      << "it has that column";
  view.Select("lstColumns", {});
  EXPECT_EQ(view.Text("lblWhy"), "Choose a column.");
  view.Click("cmdOK");
  EXPECT_EQ(view.Problem("lstColumns"), "Choose a column.");
  view.Select("lstColumns", {2});
  view.Step("udStart", -2);
  EXPECT_THAT(view.Text("lblWhy"), HasSubstr("'y' would show row 0"));
  view.Click("cmdOK");
  EXPECT_FALSE(view.IsEmpty());
  view.Set("txtStep", "1");
  EXPECT_THAT(Steps(), IsEmpty());
  view.Click("cmdOK");
  EXPECT_TRUE(view.IsEmpty());
  EXPECT_EQ(LinkOf(first), "2 002 Until 1");
  EXPECT_EQ(LinkOf(second), "2 002 Until 2");
  EXPECT_THAT(Steps(), ElementsAre("Link 2 shapes"));
  EXPECT_EQ(modLastUsed::Row, 2);
}

TEST_F(ManyShapesTest, WhatIsNoRowIsComplainedAboutAndLinesTakeColumnsInTurn) {
  const auto a = Add("a1");
  const auto b = Add("b1", 200);
  const auto c = Add("a2", 0, 25);
  const auto d = Add("b2", 200, 25);
  OpenFill({a, b, c, d});
  EXPECT_THAT(view.Property("lstColumns", "Hint"), HasSubstr("or 2 for the 2 shapes of each line"));
  EXPECT_EQ(view.Check("optNumbers", true), "The names differ in more than a number.");
  for (const std::string text : {"0", "-1", "1e9", "2000000", "abc", ""}) {
    view.Set("txtStart", text);
    EXPECT_THAT(view.Problem("txtStart"), HasSubstr("Rows count from 1")) << text;
  }
  view.Set("txtStart", "2");
  view.Set("txtStep", "x");
  EXPECT_NE(view.Problem("txtStep"), "");
  view.Set("txtStep", "1");
  view.Select("lstColumns", {0, 1});
  EXPECT_THAT(Planned(),
              ElementsAre("a1: Item 2 Plum", "b1: Price 2 4.10", "a2: Item 3 Seed", "b2: Price 3 3.20"));
  view.Click("cmdCancel");
  EXPECT_EQ(LinkOf(a), "");

  OpenFill({a, c});
  EXPECT_EQ(view.Check("optPlaces", true), "") << "a1 and a2 differ in a number alone";
  EXPECT_THROW(OpenFill({a}), basic::Error);
  presentation->Connections().clear();
  EXPECT_THROW(OpenFill({a, b}), basic::Error);
}

TEST_F(ManyShapesTest, NamesAreLookedOverBeforeTheyAreLinked) {
  const auto item = Add("p1 Item");
  const auto price = Add("price_2");
  const auto other = AddField("Price 3", 1, "Name", "002");
  AddField("Price 1", 1);
  Add("Title");
  OpenNames({});
  EXPECT_EQ(view.Top().Subject(), "slide 1");
  EXPECT_THAT(Planned(), ElementsAre("p1 Item: Item 1 Rye", "price_2: Price 2 4.10", "Price 3: Price 3 3.20"))
      << "what is linked so already is no news";
  EXPECT_THAT(view.Get<Forms::ListBox>("lstPlan").Selected(), ElementsAre(0, 1))
      << "nothing is taken from another link unasked";
  view.Select("lstPlan", {});
  view.Click("cmdOK");
  EXPECT_NE(view.Problem("lstPlan"), "");
  view.Select("lstPlan", {1, 2});
  view.Click("cmdOK");
  EXPECT_EQ(LinkOf(item), "");
  EXPECT_EQ(LinkOf(other), "2 001 Price 3");
  EXPECT_EQ(price->text, "4.10");
  EXPECT_THAT(Steps(), ElementsAre("Link 2 shapes"));

  OpenNames({price, item});
  EXPECT_EQ(view.Top().Subject(), "2 shapes");
  EXPECT_THAT(Planned(), ElementsAre("p1 Item: Item 1 Rye"));
  view.Click("cmdCancel");
  OpenNames({price, other});
  EXPECT_EQ(view.Top().Subject(), "slide 1") << "nothing is left to link among those that are selected";
  EXPECT_THAT(Planned(), ElementsAre("p1 Item: Item 1 Rye"));
  view.Click("cmdOK");
  OpenNames({});
  EXPECT_THAT(Planned(), IsEmpty());
  EXPECT_THAT(view.Text("lblWhy"), HasSubstr("No further shape"));
  view.Click("cmdCancel");
  Add("p1 item");
  OpenNames({});
  EXPECT_THAT(view.Text("lblWhy"), HasSubstr("shares its name with 1 other"));
}

}  // namespace
}  // namespace LF2000
