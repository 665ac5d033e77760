// The page of texts that show a value: one, several at once, new ones, and what is complained about.

#include <gmock/gmock.h>

#include "pages/OpenDeck.h"

namespace LF2000 {
namespace {

using modPropertyPages::Page;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using DataFieldTest = OpenDeck;

TEST_F(DataFieldTest, ALinkedTextIsShownAndEachChangeIsOneStep) {
  const auto price = AddField("p1 Price", 2);
  Dock({price});
  ASSERT_EQ(view.TopName(), "frmDataField");
  EXPECT_EQ(view.Top().Subject(), "p1 Price");
  EXPECT_EQ(view.Text("cmbConnection"), "001 Today");
  EXPECT_THAT(view.Items("cmbConnection"), ElementsAre("001 Today", "002 Offer"));
  EXPECT_THAT(view.Items("cmbColumn"), ElementsAre("Item", "Price"));
  EXPECT_EQ(view.Text("cmbColumn"), "Price");
  EXPECT_EQ(view.Text("txtRow"), "2");
  EXPECT_EQ(view.Property("txtRow", "Unit"), "of 3 rows");
  EXPECT_EQ(view.Text("lblNow"), "4.10");
  EXPECT_EQ(view.Text("lblFresh"), "Read 12:00:00, fresh");
  EXPECT_FALSE(view.Visible("cmdLink"));
  EXPECT_EQ(view.Top().Find("cmdOK"), nullptr);

  view.Set("txtRow", "1");
  EXPECT_EQ(LinkOf(price), "2 001 Price 1");
  EXPECT_EQ(price->text, "4.80") << "the shape is filled";
  view.Step("udRow", 2);
  EXPECT_EQ(LinkOf(price), "2 001 Price 3");
  view.Choose("cmbColumn", "item");
  EXPECT_EQ(LinkOf(price), "2 001 Item 3") << "spelt as the data spell it";
  view.Click("cmdUnlink");
  EXPECT_EQ(LinkOf(price), "");
  EXPECT_THAT(Steps(), ElementsAre("Row of p1 Price", "Row of p1 Price", "Link p1 Price", "Unlink p1 Price"));
  EXPECT_EQ(application->undoEntries[0].second, application->undoEntries[1].second) << "typing is one step";
  EXPECT_EQ(view.Click("cmdUnlink"), "Nothing here is linked.");
}

TEST_F(DataFieldTest, WrongInputIsComplainedAboutInItsFieldAndWritesNothing) {
  const auto price = AddField("Price", 2);
  Dock({price});
  const struct {
    const char* control;
    const char* text;
    const char* problem;
  } cases[] = {
      {"txtRow", "0", "Rows count from 1"},           {"txtRow", "-1", "Rows count from 1"},
      {"txtRow", "1000000001", "Rows count"},         {"txtRow", "1e9", "A row is a number from 1"},
      {"txtRow", "abc", "A row is a number"},         {"txtRow", "", "A row is a number"},
      {"cmbColumn", "a\tb", "holds a tab"},           {"cmbColumn", "a\x01", "control character"},
      {"cmbColumn", "Gate", "'Gate' is not in 001."}, {"cmbColumn", "Pricey", "is not in 001"},
  };
  for (const auto& c : cases) {
    view.Set(c.control, c.text);
    EXPECT_THAT(view.Problem(c.control), HasSubstr(c.problem)) << c.text;
    modPages::Refresh(presentation);
    EXPECT_EQ(view.Text(c.control), c.text) << "what is wrong stays to be mended";
  }
  EXPECT_EQ(LinkOf(price), "2 001 Price 2");
  EXPECT_THAT(Steps(), IsEmpty());

  view.Set("cmbColumn", "It");
  EXPECT_EQ(view.Problem("cmbColumn"), "") << "a name has only begun";
  view.Leave("cmbColumn");
  EXPECT_EQ(view.Problem("cmbColumn"), "'It' is not in 001.");
  EXPECT_THAT(view.Property("cmdNearest", "Caption"), "Use 'Item'");
  view.Click("cmdNearest");
  EXPECT_EQ(LinkOf(price), "2 001 Item 2");
  EXPECT_FALSE(view.Visible("cmdNearest"));
}

TEST_F(DataFieldTest, AnotherConnectionKeepsTheColumnWhereItCan) {
  const auto price = AddField("a", 1);
  Dock({price});
  view.Choose("cmbConnection", "002 Offer");
  EXPECT_EQ(LinkOf(price), "2 002 PRICE 1");
  EXPECT_EQ(price->text, "9.50");
  view.Choose("cmbColumn", "Until");
  view.Choose("cmbConnection", "001 Today");
  EXPECT_EQ(LinkOf(price), "2 001 Until 1") << "the text stays";
  EXPECT_EQ(view.Text("cmbColumn"), "Until");
  EXPECT_EQ(view.Property("cmbColumn", "Hint"), "not in 001");
  EXPECT_THAT(view.Text("lblNow"), HasSubstr("no column 'Until' in 001"));
  EXPECT_TRUE(view.Visible("cmdNearest"));
}

TEST_F(DataFieldTest, WhatIsMissingIsShownAndCanBeMended) {
  const auto lost = AddField("lost", 1, "Preis", "007");
  Dock({lost});
  EXPECT_EQ(view.Text("cmbConnection"), "007 (not there)");
  EXPECT_EQ(view.Text("cmbColumn"), "Preis");
  EXPECT_EQ(view.Text("lblNow"), "Connection 007 is not there.");
  view.Set("txtRow", "3");
  EXPECT_EQ(LinkOf(lost), "2 007 Preis 3");
  view.Choose("cmbConnection", "001 Today");
  EXPECT_EQ(view.Property("cmdNearest", "Caption"), "Use 'Price'");
  view.Click("cmdNearest");
  EXPECT_EQ(lost->text, "3.20");
}

TEST_F(DataFieldTest, ANewLinkIsProposedAndWrittenWhenTheAuthorActs) {
  const auto first = Add("p2 Item");
  Dock({first});
  EXPECT_EQ(view.Text("cmbColumn"), "Item");
  EXPECT_EQ(view.Text("txtRow"), "2");
  EXPECT_EQ(view.Text("lblNow"), "Plum");
  EXPECT_EQ(LinkOf(first), "");
  view.Click("cmdLink");
  EXPECT_EQ(LinkOf(first), "2 001 Item 2");
  EXPECT_FALSE(view.Visible("cmdLink"));

  const auto price = Add("Best price");
  Dock({price});
  EXPECT_EQ(view.Text("cmbColumn"), "Price");
  EXPECT_EQ(view.Text("txtRow"), "3") << "the last one and one more";
  const auto box = Add("TextBox 9");
  modLastUsed::Connection = "002";
  Dock({box});
  EXPECT_EQ(view.Text("cmbConnection"), "002 Offer");
  EXPECT_EQ(view.Text("cmbColumn"), "");
  view.Click("cmdLink");
  EXPECT_EQ(view.Problem("cmbColumn"), "Choose a column.");
  EXPECT_THAT(view.focused, ElementsAre("cmbColumn"));
  view.Set("txtRow", "1");
  EXPECT_EQ(LinkOf(box), "") << "not a whole link yet";
  view.Choose("cmbColumn", "Until");
  EXPECT_EQ(LinkOf(box), "2 002 Until 1");
  EXPECT_EQ(Steps().back(), "Link TextBox 9");

  presentation->Connections().clear();
  Dock({Add("other")});
  EXPECT_EQ(view.Property("cmbConnection", "Hint"), "Connect data first.");
}

TEST_F(DataFieldTest, SeveralShowWhatTheyShareAndChangeInWhatIsTouched) {
  const auto a = AddField("a", 1);
  const auto b = AddField("b", 2);
  const auto c = AddField("c", 3, "Item");
  const auto d = AddField("d", 4);
  Dock({d, b, c, a});
  EXPECT_EQ(view.Top().Subject(), "4 shapes");
  EXPECT_EQ(view.Text("cmbConnection"), "001 Today");
  EXPECT_EQ(view.Text("cmbColumn"), "(various)");
  EXPECT_EQ(view.Text("txtRow"), "1, 2, 3 …");
  EXPECT_EQ(view.Text("txtStep"), "1");
  EXPECT_EQ(view.Text("lblNow"), "4.80 · 4.10 · Seed · [Row not available in current dataset]");
  view.Set("txtRow", "2");
  EXPECT_EQ(view.Text("txtRow"), "2") << "somebody is typing";
  view.Leave("txtRow");
  EXPECT_EQ(view.Text("txtRow"), "2, 3, 4 …");
  EXPECT_EQ(LinkOf(c), "2 001 Item 4");
  view.Set("txtStep", "-1");
  EXPECT_THAT(view.Problem("txtStep"), HasSubstr("Rows count from 1"));
  view.Set("txtStep", "0");
  EXPECT_EQ(LinkOf(d), "2 001 Price 2");
  EXPECT_EQ(LinkOf(c), "2 001 Item 2") << "columns stay as they are";
  view.Choose("cmbColumn", "Price");
  EXPECT_EQ(LinkOf(c), "2 001 Price 2");
  EXPECT_THAT(Steps(), ElementsAre("Rows of 4 shapes", "Rows of 4 shapes", "Link 4 shapes"));
}

TEST_F(DataFieldTest, ShapesBelowAreFilledWithOneClick) {
  const auto first = AddField("a", 1);
  const auto second = AddField("b", 2);
  const auto below = {Add("c", 0, 50), Add("d", 0, 75)};
  Dock({first, second});
  EXPECT_EQ(view.Text("lblFill"), "2 more shapes in this column");
  EXPECT_EQ(view.Property("cmdFill", "Caption"), "&Fill rows 3–4");
  view.Click("cmdFill");
  EXPECT_EQ(LinkOf(*below.begin()), "2 001 Price 3");
  EXPECT_EQ((*below.begin())->text, "3.20");
  EXPECT_FALSE(view.Visible("cmdFill"));
  EXPECT_THAT(Steps(), ElementsAre("Link 2 shapes"));
}

TEST_F(DataFieldTest, WhatDoesNotFitIsLeftOutAndNamed) {
  const auto a = AddField("a", 1);
  const auto b = AddField("b", 2);
  const auto c = Add("c");
  slide.AddClock("hh:nn");
  Dock({AddPicture("photo"), a, b, c, slide.shapes[3]});
  EXPECT_EQ(view.TopName(), "frmDataField");
  EXPECT_EQ(view.Top().Subject(), "3 of 5 shapes");
  EXPECT_EQ(view.Text("lblLeftOut"), "3 of 5 shapes: one is a clock, one holds no text");
}

TEST_F(DataFieldTest, ADialogWritesOnOKAlone) {
  const auto price = AddField("Price", 2);
  Open(Page::DataField, {price});
  view.Set("txtRow", "1");
  EXPECT_EQ(view.Text("lblNow"), "4.80") << "shown before it is written";
  EXPECT_EQ(LinkOf(price), "2 001 Price 2");
  view.Click("cmdCancel");
  EXPECT_EQ(LinkOf(price), "2 001 Price 2");
  EXPECT_EQ(view.result, Forms::Result::Cancel);

  Open(Page::DataField, {price});
  view.Set("txtRow", "zero");
  view.Click("cmdOK");
  EXPECT_FALSE(view.IsEmpty()) << "it complains";
  view.Set("txtRow", "3");
  view.Choose("cmbColumn", "Item");
  view.Click("cmdOK");
  EXPECT_EQ(LinkOf(price), "2 001 Item 3");
  EXPECT_TRUE(view.IsEmpty());
  EXPECT_THAT(Steps(), ElementsAre("Link Price"));
  EXPECT_THROW(Open(Page::DataField, {AddPicture("photo")}), basic::Error);
  EXPECT_THROW(Open(Page::DataField, {}), basic::Error);
}

TEST_F(DataFieldTest, DataThatComeLaterAreShownByThemselves) {
  const auto price = AddField("Price", 2);
  Dock({price});
  machine.files.Write("/decks/today.txt", "Item\tPrice\nRye\t5.00\nPlum\t5.50\n");
  presentation->Connections()[0]->Requery(true);
  machine.loop.Advance(1000);
  EXPECT_EQ(view.Text("lblNow"), "5.50");
  EXPECT_EQ(view.Property("txtRow", "Unit"), "of 2 rows");
  machine.files.files.erase("/decks/today.txt");
  EXPECT_ANY_THROW(presentation->Connections()[0]->Requery(true));
  presentation->Connections()[0]->NoteFailure("File not found");
  machine.loop.Advance(1000);
  EXPECT_THAT(view.Text("lblFresh"), HasSubstr("No answer: File not found (read 12:00:00)"));
  const auto form = view.shown.back().form;
  view.Close(*form, Forms::Result::Cancel);
  machine.loop.Advance(2000);
  const int fired = machine.loop.fired;
  machine.loop.Advance(5000);
  EXPECT_EQ(machine.loop.fired, fired) << "a closed page looks no more";
}

TEST_F(DataFieldTest, TheSamePageStaysForTheSameShapes) {
  const auto a = AddField("a", 1);
  const auto b = AddField("b", 2);
  Dock({a});
  const auto page = view.shown.back().form;
  a->tags->Add("CORVANE COLUMN ROW", "3");
  Dock({a});
  EXPECT_EQ(view.shown.back().form, page);
  EXPECT_EQ(view.Text("txtRow"), "3");
  Dock({b});
  EXPECT_NE(view.shown.back().form, page);
  EXPECT_EQ(view.shown.size(), 1U);
  b->tags->items.clear();
  modPages::Refresh(presentation);
  EXPECT_TRUE(view.Visible("cmdLink"));
}

}  // namespace
}  // namespace LF2000
