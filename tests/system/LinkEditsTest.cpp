// What authors do to links: rows one after the other, copies, rows that move, and what each leaves behind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/modFillRows.h"
#include "model/modLinkClipboard.h"
#include "model/modLinkEdits.h"
#include "support/LinkedDeck.h"

namespace LF2000 {
namespace {

using modFieldNames::ColumnNames;
using modFillRows::Order;
using modManyLinks::Plan;
using modManyLinks::Source;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

struct LinkEditsTest : LinkedDeck {
  LinkEditsTest() { modLinkClipboard::Reset(); }

  /// Adds the shapes "1", "2", ... one below the other.
  modLinkEdits::Shapes Column(const std::vector<std::string>& names, double left = 0, double step = 25) {
    modLinkEdits::Shapes shapes;
    for (const std::string& name : names) {
      shapes.push_back(Add(name, left, 100 + step * static_cast<double>(shapes.size())));
    }
    return shapes;
  }

  static std::vector<std::string> Told(const Plan& plan) {
    if (!plan.Hindrances.empty()) return plan.Hindrances;
    std::vector<std::string> told;
    for (const auto& link : plan.Links) {
      told.push_back(link.Shape->Name() + ": " + link.Value.Column + " " + std::to_string(link.Value.Row));
    }
    return told;
  }
  std::vector<std::string> Filled(const modLinkEdits::Shapes& shapes, const modFillRows::Wish& wish) {
    Plan plan;
    modFillRows::Plan(plan, slide, shapes, wish, source);
    return Told(plan);
  }
  static std::vector<std::string> NamesOf(const modLinkEdits::Shapes& shapes) {
    std::vector<std::string> names;
    for (const auto& shape : shapes) names.push_back(shape->Name());
    return names;
  }
  /// "type connection column row".
  static std::string LinkOf(const std::shared_ptr<PowerPoint::Shape>& shape) {
    clsShape link;
    link.ShapeItem(shape);
    return std::to_string(link.SourceType()) + " " + link.ConnectionTagNumber() + " " + link.ColumnName() +
           " " + std::to_string(static_cast<int>(link.Row()));
  }
  static std::string TextOf(const std::shared_ptr<PowerPoint::Shape>& shape) {
    return shape->TextFrame()->TextRange()->Text();
  }

  const Source source{"001", ColumnNames({"", "Item", "Price"})};
};

TEST_F(LinkEditsTest, WhatAPageKeepsStaysAndTheRestIsCleared) {
  fakes::Shape& photo = slide.AddField("Photo", 3, "001", "Item", 3);
  photo.tags->Add("CORVANE COLUMN OBJECT FOLDER", "photos");
  photo.tags->Add("CORVANE COLUMN OBJECT EXTESION", "jpg");
  const auto before = photo.tags->items;
  clsShape link;
  link.ShapeItem(slide.shapes[0]);
  link.KeepCurrent();
  link.SetShapeTags();
  EXPECT_EQ(photo.tags->items, before);
  link.KeepCurrent();
  link.NewRow(4);
  link.SetShapeTags();
  EXPECT_EQ((*photo.tags)["CORVANE COLUMN ROW"], "4");
  EXPECT_EQ((*photo.tags)["CORVANE COLUMN OBJECT FOLDER"], "photos");

  slide.AddClock("hh:nn");
  link.ShapeItem(slide.shapes[1]);
  link.KeepCurrent();
  link.SetShapeTags();
  EXPECT_EQ((*slide.shapes[1]->tags)["CORVANE COLUMN DATE FORMAT"], "hh:nn");
  EXPECT_EQ(slide.shapes[1]->tags->items.size(), 2U) << "nothing that it never had";
}

TEST_F(LinkEditsTest, RowsFollowPlacesOrTheNumberInTheNames) {
  const auto boxes = Column({"b", "a", "c"});
  EXPECT_THAT(Filled({boxes[2], boxes[0], boxes[1]}, {{"Price"}, 4}),
              ElementsAre("b: Price 4", "a: Price 5", "c: Price 6"));
  EXPECT_THAT(Filled(boxes, {{"Price"}, 5, -2}), ElementsAre("b: Price 5", "a: Price 3", "c: Price 1"));
  EXPECT_THAT(Filled(boxes, {{"Price"}, 2, -1}),
              ElementsAre(HasSubstr("'c' would show row 0; rows count from 1 to 1000000")));
  EXPECT_THAT(Filled(boxes, {{"Price"}, 1'000'000}), testing::SizeIs(2));
  Plan tabbed;
  modFillRows::Plan(tabbed, slide, boxes, {{"a\tb"}}, {"001", {}});
  EXPECT_THAT(tabbed.Hindrances, testing::Each(HasSubstr("holds a tab")));
  EXPECT_THAT(tabbed.Links, IsEmpty());

  const auto numbered = Column({"r10 c2", "R9 c2", "r11 C2"}, 200);
  EXPECT_TRUE(modFillRows::AreNumbered(numbered));
  EXPECT_THAT(Filled(numbered, {{"Price"}}),
              ElementsAre("R9 c2: Price 1", "r10 c2: Price 2", "r11 C2: Price 3"));
  EXPECT_THAT(Filled(numbered, {{"Price"}, 1, 1, Order::Places}),
              ElementsAre("r10 c2: Price 1", "R9 c2: Price 2", "r11 C2: Price 3"));
  EXPECT_FALSE(modFillRows::AreNumbered(Column({"r1 c1", "r2 c2"}, 400)));
  EXPECT_FALSE(modFillRows::AreNumbered(Column({"r1", "s2"}, 600)));
  EXPECT_FALSE(modFillRows::AreNumbered({numbered[0]}));
}

TEST_F(LinkEditsTest, AGridOfShapesTakesAColumnEach) {
  auto shapes = Column({"a1", "a2"});
  const auto right = Column({"b1", "b2"}, 200);
  shapes.insert(shapes.begin(), right.begin(), right.end());
  EXPECT_EQ(modFillRows::CountAcross(shapes), 2U);
  EXPECT_THAT(Filled(shapes, {{"Item", "Price"}, 3}),
              ElementsAre("a1: Item 3", "b1: Price 3", "a2: Item 4", "b2: Price 4"));
  shapes.pop_back();
  EXPECT_EQ(modFillRows::CountAcross(shapes), 0U);
  EXPECT_THAT(Filled(shapes, {{"Item", "Price"}}),
              ElementsAre("Slide 1: line 2 of the shapes, from 'b2' on, holds 1 of them, not 2 as there are "
                          "columns."));
}

TEST_F(LinkEditsTest, ShapesBelowGoOnWhereOthersEnd) {
  const auto column = Column({"1", "2", "3", "4", "5", "6"});
  Add("beside", 300, 150);
  Add("panel", 0, 140)->height = 200;
  EXPECT_THAT(NamesOf(modFillRows::ShapesBelow(slide, {column[0], column[1]})),
              ElementsAre("3", "4", "5", "6"));
  dynamic_cast<fakes::Shape&>(*column[5]).top += 60;
  EXPECT_THAT(NamesOf(modFillRows::ShapesBelow(slide, {column[0]})), ElementsAre("2", "3", "4", "5"))
      << "the last one stands apart";
  dynamic_cast<fakes::Shape&>(*column[3]).tags->Add("CORVANE COLUMN TYPE", "2");
  EXPECT_THAT(NamesOf(modFillRows::ShapesBelow(slide, {column[1]})), ElementsAre("3"));
  EXPECT_THAT(modFillRows::ShapesBelow(slide, {}), IsEmpty());
}

TEST_F(LinkEditsTest, LinkingIsOneStepAndShowsTheValues) {
  const auto shapes = Column({"x", "y"});
  Plan plan;
  modFillRows::Plan(plan, slide, shapes, {{"Item"}, 2}, modLinkEdits::SourceOf(*presentation, "001"));
  modLinkEdits::Link(*presentation, plan);
  EXPECT_THAT(application->undoEntries, ElementsAre(Pair("Link 2 shapes", "")));
  EXPECT_EQ(TextOf(shapes[1]), "Seed");
  EXPECT_EQ(modLinkEdits::MoveRows(*presentation, slide, shapes, -1), "");
  EXPECT_EQ(TextOf(shapes[0]), "Rye");
  EXPECT_EQ(modLinkEdits::MoveRows(*presentation, slide, shapes, -1),
            "'x' shows row 1; rows count from 1 to 1000000.");
  EXPECT_EQ(LinkOf(shapes[1]), "2 001 Item 2") << "none moves alone";
  EXPECT_EQ(application->undoEntries.size(), 2U);

  modLinkEdits::Unlink(*presentation, {shapes[0]});
  EXPECT_EQ(application->undoEntries.back().first, "Unlink x");
  EXPECT_EQ(LinkOf(shapes[0]), "0   0");
  EXPECT_EQ(modLinkEdits::MoveRows(*presentation, slide, {shapes[0]}, 1), "Nothing here shows a row.");
  modLinkEdits::Unlink(*presentation, {shapes[0]});
  EXPECT_EQ(application->undoEntries.size(), 3U) << "nothing to take away";
}

TEST_F(LinkEditsTest, NamesAreOfferedUntilTheyAreLinked) {
  Column({"p1 Item", "p2_item", "Price 1", "Title"});
  EXPECT_EQ(modLinkEdits::CountOffers(*presentation, slide, "001"), 3U);
  EXPECT_EQ(modLinkEdits::CountOffers(*presentation, slide, "009"), 0U);
  Plan plan;
  modManyLinks::AddNames(plan, slide, modLinkEdits::SourceOf(*presentation, "001"));
  plan.Links.pop_back();
  modLinkEdits::Link(*presentation, plan);
  EXPECT_EQ(modLinkEdits::CountOffers(*presentation, slide, "001"), 1U);
}

TEST_F(LinkEditsTest, ACopiedLinkGoesOntoWhatTakesIt) {
  slide.AddField("from", 1, "001", "Item");
  const auto from = slide.shapes.back();
  const auto shapes = Column({"x", "y"}, 200);
  auto picture = Add("picture", 400, 0);
  picture->hasTextFrame = false;
  picture->type = PowerPoint::ShapeType::Picture;
  using modLinkClipboard::Way;
  const auto whyNot = [&](const modLinkEdits::Shapes& onto, Way way = Way::Same) {
    return modLinkClipboard::WhyNot(*presentation, slide, onto, way);
  };
  EXPECT_EQ(whyNot(shapes), "Copy a link first.");
  modLinkClipboard::Copy(shapes[0]);
  EXPECT_FALSE(modLinkClipboard::HasLink());
  modLinkClipboard::Copy(from);
  EXPECT_EQ(whyNot({}), "Select a shape first.");
  EXPECT_EQ(whyNot({picture}), "'picture' holds no text.");
  EXPECT_EQ(whyNot({picture, shapes[0]}), "");

  auto pasted = modLinkClipboard::Paste(*presentation, slide, {shapes[1], picture, shapes[0]}, Way::NextRow);
  EXPECT_EQ(pasted.Count, 2U);
  EXPECT_THAT(pasted.LeftOut, ElementsAre("'picture' holds no text."));
  EXPECT_EQ(LinkOf(shapes[0]), "2 001 Item 2");
  EXPECT_EQ(TextOf(shapes[1]), "Seed");
  pasted = modLinkClipboard::Paste(*presentation, slide, {shapes[0]}, Way::NextRow);
  EXPECT_EQ(LinkOf(shapes[0]), "2 001 Item 4") << "it goes on where the last one ended";
  EXPECT_THAT(application->undoEntries, ElementsAre(Pair("Link 2 shapes", ""), Pair("Link x", "")));

  slide.AddClock("hh:nn");
  modLinkClipboard::Copy(slide.shapes.back());
  EXPECT_EQ(whyNot({shapes[0]}, Way::NextRow), "The link that was copied has no row.");
  modLinkClipboard::Paste(*presentation, slide, {shapes[0]}, Way::Same);
  EXPECT_EQ(TextOf(shapes[0]), "12:00");
  EXPECT_EQ(dynamic_cast<fakes::Shape&>(*shapes[0]).tags->items.size(), 2U) << "nothing of the field is left";
  slide.AddField("lost", 1, "007");
  modLinkClipboard::Copy(slide.shapes.back());
  EXPECT_EQ(whyNot({shapes[0]}), "Connection 007 is not there.");
}

}  // namespace
}  // namespace LF2000
