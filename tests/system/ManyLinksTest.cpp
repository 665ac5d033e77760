// Many shapes at once: where they stand, what they are called, what is typed into them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "model/modManyLinks.h"
#include "model/modPlaces.h"
#include "model/modRelink.h"
#include "model/modShapeGrid.h"

namespace LF2000 {
namespace {

using modFieldNames::ColumnNames;
using modManyLinks::Plan;
using modManyLinks::Source;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct ManyLinksTest : testing::Test {
  fakes::Shape& Add(const std::string& name, double left, double top, double width = 100,
                    double height = 20) {
    fakes::Shape& shape = slide->Add(name);
    shape.left = left;
    shape.top = top;
    shape.width = width;
    shape.height = height;
    return shape;
  }

  /// Shapes named "1 1" by row and column.
  void AddGrid(int rows, int columns, double rowStep = 25, double columnStep = 110) {
    for (int row = 1; row <= rows; ++row) {
      for (int column = 1; column <= columns; ++column) {
        Add(std::to_string(row) + " " + std::to_string(column), 50 + columnStep * (column - 1),
            100 + rowStep * (row - 1));
      }
    }
  }

  void Remove(const std::string& name) {
    std::erase_if(slide->shapes, [&](const auto& shape) { return shape->name == name; });
  }

  fakes::Shape& Named(const std::string& name) {
    return dynamic_cast<fakes::Shape&>(*slide->Item(std::string_view(name)));
  }

  std::vector<std::string> Cells(int rows, int columns) {
    const auto grid = modShapeGrid::FindGrid(modPlaces::PlacesOf(*slide), "1 1", rows, columns);
    if (!grid.Hindrances.empty()) return grid.Hindrances;
    return Names(grid.Cells);
  }

  static std::vector<std::string> Names(const std::vector<modPlaces::Placed>& shapes) {
    std::vector<std::string> names;
    for (const auto& each : shapes) names.push_back(each.Shape->Name());
    return names;
  }

  /// "shape: connection column row" for each link, or what hinders.
  static std::vector<std::string> Told(const Plan& plan) {
    if (!plan.Hindrances.empty()) return plan.Hindrances;
    std::vector<std::string> told;
    for (const auto& link : plan.Links) {
      told.push_back(link.Shape->Name() + ": " + link.Connection + " " + link.Value.Column + " " +
                     std::to_string(link.Value.Row));
    }
    return told;
  }

  fakes::Machine machine;
  std::shared_ptr<fakes::Slide> slide = std::make_shared<fakes::Slide>();
  const Source departures{"001", ColumnNames({"", "Time", "Train", "To"})};
};

TEST_F(ManyLinksTest, ReadingGoesByRowsEvenWhereTheyAreNotStraightOrOverlap) {
  Add("d", 200, 126, 100, 29);
  Add("b", 200, 97, 100, 29);
  Add("c", 50, 124, 100, 29);
  Add("a", 50, 103, 100, 29);
  Add("line", 0, 160, 400, 0);
  Add("tall", 400, 95, 50, 40);
  EXPECT_THAT(Names(modPlaces::InReadingOrder(modPlaces::PlacesOf(*slide))),
              ElementsAre("a", "b", "tall", "c", "d", "line"));
}

TEST_F(ManyLinksTest, AGridIsFoundByPlaceWhateverTheDrawingOrder) {
  AddGrid(40, 25);
  std::shuffle(slide->shapes.begin(), slide->shapes.end(), std::mt19937(7));
  const auto cells = Cells(40, 25);
  ASSERT_EQ(cells.size(), 1000U);
  EXPECT_EQ(cells[0], "1 1");
  EXPECT_EQ(cells[26], "2 2");
  EXPECT_EQ(cells[999], "40 25");
  EXPECT_THAT(Cells(2, 2), ElementsAre("1 1", "1 2", "2 1", "2 2")) << "the rest is left alone";
}

TEST_F(ManyLinksTest, AGridIsAsPeopleDrawIt) {
  AddGrid(3, 3);
  // Jitter, a box that has grown downwards, narrow and wide ones that share an edge, rows that overlap.
  Named("2 1").left += 4;
  Named("2 3").top -= 5;
  Named("3 2").height = 45;
  Named("3 1").width = 30;
  Named("2 2").left += 60;
  Named("2 2").width = 40;
  for (const auto& shape : slide->shapes) shape->height += 9;
  // What is no cell: a panel behind, another kind, a caption.
  Add("panel", 40, 90, 400, 200);
  Add("picture", 160, 125).hasTextFrame = false;
  Add("frame", 160, 125).type = PowerPoint::ShapeType::AutoShape;
  Add("caption", 50, 20);
  EXPECT_THAT(Cells(3, 3), ElementsAre("1 1", "1 2", "1 3", "2 1", "2 2", "2 3", "3 1", "3 2", "3 3"));
}

TEST_F(ManyLinksTest, WhatHindersAGridIsSaid) {
  const auto without = [this](const std::vector<std::string>& names) {
    slide = std::make_shared<fakes::Slide>();
    AddGrid(4, 4);
    for (const std::string& name : names) Remove(name);
  };
  without({"2 2", "3 3"});
  EXPECT_THAT(Cells(4, 4), ElementsAre("Row 2, column 2 has no shape.", "Row 3, column 3 has no shape."));
  without({"2 1"});
  EXPECT_THAT(Cells(3, 4),
              testing::Contains(HasSubstr("'3 1' follows '1 1' after 50 points, others after 25")));
  without({"1 2"});
  EXPECT_THAT(Cells(4, 3),
              testing::Contains("'2 2' stands among the cells, but in no row and column of theirs."));
  without({});
  EXPECT_THAT(Cells(5, 4), ElementsAre("From '1 1' downwards stand 4 shapes of its kind in line, not 5."));
  EXPECT_THAT(Cells(4, 5), ElementsAre("From '1 1' to the right stand 4 shapes of its kind in line, not 5."));
  Add("copy", 162, 127);
  EXPECT_THAT(Cells(4, 4), ElementsAre("Row 2, column 2 is taken by '2 2' and by 'copy'."));
  Add("copy", 52, 127);
  EXPECT_THAT(Cells(4, 4), testing::Contains("'2 1' and 'copy' stand on top of each other."));
  Remove("1 1");
  EXPECT_THAT(Cells(2, 2), ElementsAre("There is no shape named '1 1'."));
  Add("1 1", 0, 0).hasTextFrame = false;
  EXPECT_THAT(Cells(2, 2), ElementsAre("'1 1' holds no text."));
}

TEST_F(ManyLinksTest, NamesMeanAColumnAndARow) {
  const ColumnNames columns({"", "Item", "Item Price", "Gate1", "Rate (%)", "Über", ""});
  const struct {
    const char* name;
    const char* field;
  } cases[] = {
      {"p1 Item", "Item 1"},
      {"Item 12", "Item 12"},
      {"p1.Item", "Item 1"},
      {"Item1", "Item 1"},
      {"ITEM_003", "Item 3"},
      {"Item (2)", "Item 2"},
      {"item[4]", "Item 4"},
      {"1: Item", "Item 1"},
      {"Item row 5", "Item 5"},
      {"Zeile 6 - Item", "Item 6"},
      {"p1 Item Price", "Item Price 1"},
      {"Item Price 2", "Item Price 2"},
      {"Gate1 2", "Gate1 2"},
      {"Rate (%) 1", "Rate (%) 1"},
      {"p1 Rate (%)", "Rate (%) 1"},
      {"Über 9", "Über 9"},
      {"p2 item_price", "Item Price 2"},
      {"ItemPrice-3", "Item Price 3"},
      {"Gate12", "-"},
      {"Item", "-"},
      {"Item 0", "-"},
      {"Item -1", "Item 1"},
      {"Item 99999999999", "-"},
      {"TextBox 9", "-"},
      {"Textfeld 9", "-"},
      {"Items 1", "-"},
      {"1 Item 2", "-"},
      {"Item 1 old", "-"},
      {"", "-"},
      {"7", "-"},
  };
  for (const auto& c : cases) {
    const auto field = modFieldNames::FromShapeName(c.name, columns);
    EXPECT_EQ(field ? field->Column + " " + std::to_string(field->Row) : "-", c.field) << c.name;
  }
  const auto suggested = modFieldNames::Suggest("Offer item-price", columns);
  ASSERT_TRUE(suggested.has_value());
  EXPECT_EQ(suggested->Column + std::to_string(suggested->Row), "Item Price0");
  EXPECT_FALSE(modFieldNames::Suggest("Title", columns).has_value());
}

TEST_F(ManyLinksTest, MarksMeanAConnectionAColumnAndARow) {
  const struct {
    const char* text;
    const char* mark;
  } cases[] = {
      {"{{Time.1}}", " Time 1"},
      {"\r {{ Time . 12 }}\u00A0\v", " Time 12"},
      {"{{001.Time.1}}", "001 Time 1"},
      {"{{7.Time.1}}", "007 Time 1"},
      {"{{a.b.3}}", " a.b 3"},
      {"{{002.a.b.3}}", "002 a.b 3"},
      {"{{7.1}}", " 7 1"},
      {"{{Time}}", "names no row: it is written {{Column.1}}"},
      {"{{Time.x}}", "does not end with the number of a row: it is written {{Column.1}}"},
      {"{{.1}}", "names no column: it is written {{Column.1}}"},
      {"at {{Time.1}}", "does not stand alone: a linked shape shows the value and nothing else"},
      {"{{Time.1}} {{To.1}}", "does not stand alone: a linked shape shows the value and nothing else"},
      {"{{Time.1", "-"},
      {"}}{{", "-"},
      {"Time.1", "-"},
  };
  for (const auto& c : cases) {
    const auto mark = modFieldNames::FromText(c.text);
    const std::string told = !mark                    ? "-"
                             : !mark->Problem.empty() ? mark->Problem
                                                      : mark->Connection + " " + mark->Value.Column + " " +
                                                            std::to_string(mark->Value.Row);
    EXPECT_EQ(told, c.mark) << c.text;
  }
}

TEST_F(ManyLinksTest, AGridTakesColumnsAndRowsOfTheData) {
  AddGrid(2, 3);
  Plan plan;
  modManyLinks::AddGrid(plan, *slide, {"1 1", {"time", "", "To"}, 2, 9}, departures);
  EXPECT_THAT(Told(plan),
              ElementsAre("1 1: 001 Time 9", "1 3: 001 To 9", "2 1: 001 Time 10", "2 3: 001 To 10"));

  Plan wrong;
  modManyLinks::AddGrid(wrong, *slide, {"1 1", {"Time", "Gate"}, 2}, departures);
  EXPECT_THAT(Told(wrong),
              ElementsAre("Slide 1: Connection 001 has no column 'Gate'. It has: Time, Train, To."));
  Plan unknown;
  modManyLinks::AddGrid(unknown, *slide, {"1 1", {"Time", "Gate"}, 1}, {"001", {}});
  EXPECT_THAT(Told(unknown), ElementsAre("1 1: 001 Time 1", "1 2: 001 Gate 1")) << "cannot be read today";
}

TEST_F(ManyLinksTest, NamedShapesAreLinkedAsWhatTheyAre) {
  Add("p1 Time", 0, 0);
  Add("p1 Train", 0, 0).hasTextFrame = false;
  Named("p1 Train").type = PowerPoint::ShapeType::Picture;
  Add("TextBox 9", 0, 0);
  Plan plan;
  modManyLinks::AddNames(plan, *slide, departures);
  ASSERT_THAT(Told(plan), ElementsAre("p1 Time: 001 Time 1", "p1 Train: 001 Train 1"));

  modManyLinks::Write(plan, modManyLinks::Files{"photos", "jpg"});
  EXPECT_EQ((*Named("p1 Time").tags)["CORVANE COLUMN TYPE"], "2");
  EXPECT_EQ((*Named("p1 Time").tags)["CORVANE COLUMN ROW"], "1");
  EXPECT_EQ((*Named("p1 Time").tags)["CORVANE COLUMN OBJECT FOLDER"], "(none)");
  EXPECT_EQ((*Named("p1 Train").tags)["CORVANE COLUMN TYPE"], "3");
  EXPECT_EQ((*Named("p1 Train").tags)["CORVANE COLUMN OBJECT FOLDER"], "photos");
  EXPECT_THAT(Named("TextBox 9").tags->items, IsEmpty());
}

TEST_F(ManyLinksTest, EverythingThatHindersIsToldAtOnce) {
  Add("Time 1", 0, 0);
  Add("time 1", 0, 0);
  Add("Train 1", 0, 0).hasTextFrame = false;
  Named("Train 1").chart = std::make_shared<fakes::Chart>();
  fakes::Shape& group = Add("Group 5", 0, 0);
  group.type = PowerPoint::ShapeType::Group;
  group.hasTextFrame = false;
  group.grouped.push_back(std::make_shared<fakes::Shape>("To 1"));
  group.grouped[0]->text = "{{To.1}}";
  Plan names;
  modManyLinks::AddNames(names, *slide, departures);
  const std::string grouped =
      "Slide 1: Shape 'To 1' stands in the group 'Group 5'; shapes in groups cannot be linked, so ungroup it "
      "first.";
  EXPECT_THAT(
      names.Hindrances,
      ElementsAre(HasSubstr("'Time 1' shares its name with 1 other"), HasSubstr("'time 1' shares its name"),
                  HasSubstr("'Train 1' is a chart, which takes a connection as a whole"), grouped));
  EXPECT_THAT(names.Links, IsEmpty());

  Add("a", 0, 0).text = "{{Time.1}}";
  Add("b", 0, 0).text = "{{009.Time.1}}";
  Add("c", 0, 0).text = "{{001.Gate.1}}";
  Add("d", 0, 0).text = "{{Time}}";
  Add("e", 0, 0).text = "{{001.time.3}}";
  Add("f", 0, 0).text = "{{To.1}}";
  Named("f").tags->Add("CORVANE COLUMN TYPE", "1");
  Plan texts;
  modManyLinks::AddTexts(texts, *slide,
                         [&](std::string_view number) { return number == "001" ? &departures : nullptr; });
  EXPECT_THAT(texts.Hindrances,
              ElementsAre(grouped, HasSubstr("'a' holds a mark that names no connection"),
                          HasSubstr("'b' is for connection 009, which is not there"),
                          HasSubstr("'c' is for the column 'Gate', which connection 001 does not have"),
                          HasSubstr("'d' holds a mark that names no row")));
  ASSERT_EQ(texts.Links.size(), 1U) << "what is linked already shows data, no marks";
  EXPECT_EQ(texts.Links[0].Value.Column, "Time");
}

TEST(RelinkTest, LeadsThoseOfOneColumnToAnother) {
  fakes::Machine machine;
  const auto presentation = std::make_shared<fakes::Presentation>();
  fakes::Presentation& deck = *presentation;
  deck.Add().AddField("a", 1, "001", "Preis");
  fakes::Slide& second = deck.Add();
  second.AddField("b", 2, "001", "PREIS", /*sourceType=*/3)
      .tags->Add("CORVANE COLUMN OBJECT FOLDER", "photos");
  second.AddField("c", 3, "001", "Name");
  second.AddField("d", 4, "002", "Preis");
  second.AddChart("e");

  const auto links = modRelink::FindLinks(deck, "001", "preis");
  modRelink::Relink(links, "001", "Price");
  EXPECT_EQ((*deck.slides[0]->shapes[0]->tags)["CORVANE COLUMN COLUMNNAME"], "Price");
  const fakes::Tags& picture = *second.shapes[0]->tags;
  EXPECT_EQ(picture["CORVANE COLUMN COLUMNNAME"], "Price");
  EXPECT_EQ(picture["CORVANE COLUMN ROW"], "2");
  EXPECT_EQ(picture["CORVANE COLUMN OBJECT FOLDER"], "photos");
  EXPECT_EQ(picture["CORVANE COLUMN OBJECT EXTESION"], "(none)");
  EXPECT_EQ((*second.shapes[1]->tags)["CORVANE COLUMN COLUMNNAME"], "Name");
  EXPECT_EQ((*second.shapes[2]->tags)["CORVANE COLUMN COLUMNNAME"], "Preis");

  modRelink::Relink(modRelink::FindLinks(deck, "001"), "003");
  EXPECT_EQ((*second.shapes[1]->tags)["CORVANE COLUMN TAG"], "003");
  EXPECT_EQ((*second.shapes[3]->tags)["CORVANE COLUMN TAG"], "003");
  EXPECT_EQ((*second.shapes[3]->tags)["CORVANE COLUMN COLUMNNAME"], "(none)");
}

TEST(RelinkTest, TheLikestColumnComesFirst) {
  const std::vector<std::string> columns{"", "Item", "Unit price", "Price", "", "Gate"};
  EXPECT_THAT(modRelink::ByLikeness("Preis", columns), ElementsAre("Price", "Item", "Gate", "Unit price"));
  EXPECT_EQ(modRelink::ByLikeness("PRICE €", columns).front(), "Price");
  EXPECT_THAT(modRelink::ByLikeness("", {""}), IsEmpty());
}

}  // namespace
}  // namespace LF2000
