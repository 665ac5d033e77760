// Pages of pictures, clocks, charts, tables and of what cannot be linked.

#include <gmock/gmock.h>

#include "pages/OpenDeck.h"

namespace LF2000 {
namespace {

using modPropertyPages::Page;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ShapePagesTest = OpenDeck;

TEST_F(ShapePagesTest, APictureShowsWhichFileResultsAndWhichAreMissing) {
  machine.files.Write("/decks/photos/Rye.jpg", "x");
  machine.files.Write("/decks/photos/Seed.jpg", "x");
  const auto photo = AddPicture("p1 Item");
  Dock({photo});
  ASSERT_EQ(view.TopName(), "frmDataObject");
  view.Click("cmdLink");
  EXPECT_THAT(view.Text("lblFile"), HasSubstr("File not found"));
  view.Click("cmdBrowse");
  EXPECT_THAT(view.titles, ElementsAre("Select a folder where the file can be found."));
  view.answer("/decks/photos");
  EXPECT_EQ(view.Text("txtFolder"), "photos") << "from the deck on, so that both can be moved";
  const Forms::Items& extensions = view.Get<Forms::ComboBox>("cmbExtension").Items();
  EXPECT_EQ(extensions[0].Text + ", " + extensions[0].Note, "jpg, 2 files") << "what is there comes first";
  EXPECT_EQ(extensions[1].Text + extensions[1].Note, "png");
  view.Set("cmbExtension", ".jpg");
  EXPECT_EQ(LinkOf(photo), "3 001 Item 1 photos jpg");
  EXPECT_EQ(view.Text("lblFile"), "photos\\Rye.jpg is there.");
  EXPECT_EQ(view.Property("picNow", "File"), "/decks/photos/Rye.jpg");
  EXPECT_EQ(photo->shownFile, "/decks/photos/Rye.jpg");
  EXPECT_EQ(view.Text("lblMissing"), "1 of 3 rows names no file");
  EXPECT_THAT(view.Cells("grdFiles"), ElementsAre(ElementsAre("2", "photos\\Plum.jpg")));
  EXPECT_THAT(Steps(), ElementsAre("Link p1 Item", "Folder of p1 Item", "Extension of p1 Item"));

  machine.files.Write("/decks/photos/Plum.jpg", "x");
  machine.loop.Advance(6000);
  EXPECT_FALSE(view.Visible("lblMissing")) << "it has come meanwhile";
  view.Set("cmbExtension", "a/b");
  EXPECT_THAT(view.Problem("cmbExtension"), HasSubstr("such as jpg"));
  view.Set("txtFolder", "a\tb");
  EXPECT_THAT(view.Problem("txtFolder"), HasSubstr("no tab"));
  view.Click("cmdBrowse");
  view.answer(std::nullopt);
  EXPECT_EQ(view.Text("txtFolder"), "a\tb") << "nobody chose";
  view.Set("txtRow", "2");
  EXPECT_EQ(LinkOf(photo), "3 001 Item 2 photos jpg");
}

TEST_F(ShapePagesTest, AClockShowsItsFormatsAsTheyLookNow) {
  fakes::Shape& clock = slide.AddClock("hh:nn");
  Dock({slide.shapes[0]});
  ASSERT_EQ(view.TopName(), "frmClock");
  EXPECT_EQ(view.Text("cmbFormat"), "hh:nn");
  EXPECT_EQ(view.Get<Forms::ComboBox>("cmbFormat").Items().size(), 12U);
  EXPECT_EQ(view.Get<Forms::ComboBox>("cmbFormat").Items()[1].Note, "12:00:00");
  view.Choose("cmbFormat", "hh:nn:ss");
  EXPECT_EQ(LinkOf(slide.shapes[0]), "1 hh:nn:ss");
  EXPECT_EQ(clock.text, "12:00:00");
  machine.loop.Advance(2000);
  EXPECT_EQ(view.Text("lblNow"), "12:00:02") << "it moves";
  view.Set("cmbFormat", "\"Open\"");
  EXPECT_THAT(view.Problem("cmbFormat"), HasSubstr("no sign of a date or a time"));
  EXPECT_EQ(LinkOf(slide.shapes[0]), "1 hh:nn:ss");
  EXPECT_THAT(Steps(), ElementsAre("Format of clock"));

  const auto title = Add("Title");
  Open(Page::Clock, {slide.shapes[0], title});
  EXPECT_EQ(view.Text("cmbFormat"), "(various)");
  view.Click("cmdOK");
  EXPECT_EQ(LinkOf(title), "") << "nothing was touched";
  Open(Page::Clock, {slide.shapes[0], title});
  view.Set("cmbFormat", "dddd");
  view.Click("cmdOK");
  EXPECT_EQ(LinkOf(title), "1 dddd");
  EXPECT_EQ(title->text, "Tuesday");
}

TEST_F(ShapePagesTest, AChartShowsWhatEachColumnBecomes) {
  machine.files.Write("/decks/today.txt",
                      "Item\tPrice\tNote\tRate\nRye\t4.80\tgood\t1\nPlum\t4.10\told\tx\n");
  presentation->Connections()[0]->Requery(true);
  fakes::Chart& chart = slide.AddChart("Chart 1", "002");
  Dock({slide.shapes[0]});
  ASSERT_EQ(view.TopName(), "frmGraph");
  EXPECT_EQ(view.Text("cmbConnection"), "002 Offer");
  view.Choose("cmbConnection", "001 Today");
  EXPECT_EQ(LinkOf(slide.shapes[0]), "4 001");
  EXPECT_EQ(chart.fills, 1);
  EXPECT_THAT(view.Cells("grdMapping"), ElementsAre(ElementsAre("Item", "categories or X", "texts"),
                                                    ElementsAre("Price", "series 1", "numbers"),
                                                    ElementsAre("Note", "series 2", "texts"),
                                                    ElementsAre("Rate", "series 3", "numbers and texts")));
  EXPECT_EQ(view.Text("lblWarning"),
            "Column 'Note' holds text and no number.\n"
            "Column 'Rate' holds texts among its numbers, which become gaps.");
  chart.fails = true;
  Dock({slide.shapes[0]});
  EXPECT_EQ(view.Text("lblWarning"), "the chart takes no data");
  view.Click("cmdUnlink");
  EXPECT_EQ(chart.restored, 1);
  EXPECT_THAT(Steps(), ElementsAre("Link Chart 1", "Unlink Chart 1"));
  EXPECT_TRUE(view.Visible("cmdLink"));
}

TEST_F(ShapePagesTest, ATableShowsWhichColumnsItTakes) {
  slide.AddTable("Prices", "price|Item| /a|b|c");
  Dock({slide.shapes[0]});
  EXPECT_EQ(view.Top().Caption(), "Table");
  EXPECT_THAT(view.Cells("grdMapping"),
              ElementsAre(ElementsAre("price", "Price"), ElementsAre("Item", "Item"),
                          ElementsAre("3", "stays as it is")));
  EXPECT_EQ(view.Text("lblWarning"), "The table has room for 1 of 3 rows; it can scroll through them.");
  view.Choose("cmbConnection", "002 Offer");
  EXPECT_THAT(view.Text("lblWarning"), HasSubstr("has no column 'Item'"));
  view.Click("cmdUnlink");
  slide.AddTable("Lost", "Item/a", "009");
  Dock({slide.shapes[1]});
  EXPECT_EQ(view.Text("lblWarning"), "Connection 009 is not there.");
}

TEST_F(ShapePagesTest, WhatCannotBeLinkedSaysWhyAndADoubledNameCanBeMended) {
  const auto group = Add("Group 1");
  group->hasTextFrame = false;
  group->type = PowerPoint::ShapeType::Group;
  Dock({group});
  ASSERT_EQ(view.TopName(), "frmNotLinkable");
  EXPECT_THAT(view.Text("lblWhy"), HasSubstr("'Group 1' (group) is a group; shapes in groups"));
  EXPECT_FALSE(view.Visible("txtName"));

  const auto price = Add("Price");
  const auto copy = Add("price");
  Add("Price 2");
  Dock({copy});
  EXPECT_THAT(view.Text("lblWhy"), HasSubstr("shares its name with 1 other"));
  EXPECT_EQ(view.Text("txtName"), "price 3") << "a name that is free";
  for (const std::string name : {"", "  ", "PRICE", "price 2"}) {
    view.Set("txtName", name);
    view.Click("cmdRename");
    EXPECT_NE(view.Problem("txtName"), "") << name;
  }
  EXPECT_THAT(Steps(), IsEmpty());
  view.Set("txtName", "Offer Price");
  view.Click("cmdRename");
  EXPECT_EQ(copy->name, "Offer Price");
  EXPECT_THAT(Steps(), ElementsAre("Rename price"));
  Dock({copy});
  EXPECT_EQ(view.TopName(), "frmDataField");
}

}  // namespace
}  // namespace LF2000
