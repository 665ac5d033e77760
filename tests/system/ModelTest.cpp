// Tags, slide properties and shape links.

#include <gtest/gtest.h>

#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "model/modTags.h"
#include "support/ErrorOf.h"

namespace LF2000 {
namespace {

using support::errorNumber;

struct ModelTest : testing::Test {
  fakes::Machine machine;
};

TEST_F(ModelTest, SlidePropertiesParseWithTheirAsymmetry) {
  const struct {
    const char* text;
    bool hide;
    bool refresh;
    bool reported;
  } cases[] = {
      {"-1\t-1\t", true, true, false},       {"-1\t", true, false, false}, {"-1\t-1", true, false, false},
      {"0\t0\t", false, false, false},       {"-1", true, false, true},    {"x\t-1\t", false, false, true},
      {"True\tfalse\t", true, false, false}, {"", false, false, true},
  };
  for (const auto& c : cases) {
    machine.messageBox.shown.clear();
    clsSlide slide;
    slide.TagString(c.text);
    EXPECT_EQ(slide.HideWhenNoData(), c.hide) << c.text;
    EXPECT_EQ(slide.RefreshLinkedObjects(), c.refresh) << c.text;
    EXPECT_EQ(machine.messageBox.shown.size(), c.reported ? 1U : 0U) << c.text;
    if (!machine.messageBox.shown.empty()) {
      EXPECT_EQ(machine.messageBox.shown[0].text, "Error setting connection tag.");
    }
  }
  EXPECT_EQ(clsSlide().TagString(), "0\t0\t");
}

TEST_F(ModelTest, ScrollEntriesAreBoundedAndFilledInOrder) {
  clsSlide slide;
  slide.SetScrollStep("999", 4);
  EXPECT_EQ(slide.ScrollStep(" 999 "), 4);
  EXPECT_EQ(errorNumber([&] { slide.SetScrollStep("1000", 1); }), 9);
  EXPECT_EQ(errorNumber([&] { (void)slide.ScrollTime("-1"); }), 9);
  EXPECT_EQ(errorNumber([&] { (void)slide.ScrollEnabled("Title 1"); }), 13);

  slide.AddScrollInfo("7", "True\t2\t500");
  EXPECT_NE(errorNumber([&] { slide.AddScrollInfo("7", "False\t3"); }), 0);
  EXPECT_FALSE(slide.ScrollEnabled("7"));
  EXPECT_EQ(slide.ScrollStep("7"), 3);
  EXPECT_EQ(slide.ScrollTime("7"), 500);

  fakes::Slide host;
  host.tags->Add("CORVANE SCROLLSTEP3", "True\t1\t100");
  EXPECT_TRUE(modTags::ShapeScrollEnabled(host, "3"));
  EXPECT_FALSE(modTags::ShapeScrollEnabled(host, "4"));
}

std::shared_ptr<fakes::Shape> LinkedShape() {
  fakes::Slide slide;
  slide.AddField("Price", 3, "004")
      .tags->items.insert(slide.shapes[0]->tags->items.begin(), {"OTHER", "kept"});
  return slide.shapes[0];
}

TEST_F(ModelTest, AShapeReadsItsTagsAndIsResetByEveryAttachment) {
  clsShape link;
  link.ShapeItem(LinkedShape());
  EXPECT_TRUE(link.LumenfoldEnabled());
  EXPECT_EQ(link.SourceType(), 2);
  EXPECT_EQ(link.ConnectionTagNumber(), "004");
  EXPECT_EQ(link.ColumnName(), "Price");
  EXPECT_EQ(link.Row(), 3);
  link.SourceType(3);
  EXPECT_EQ(link.SourceType(), 3);

  link.ShapeItem(std::make_shared<fakes::Shape>("plain"));
  EXPECT_FALSE(link.LumenfoldEnabled());
  EXPECT_EQ(link.SourceType(), 0);
  EXPECT_EQ(link.ConnectionTagNumber(), "");
  EXPECT_TRUE(std::holds_alternative<basic::Empty>(link.GetValue()));

  auto broken = LinkedShape();
  broken->tags->items[1].second = "two";
  link.ShapeItem(broken);
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Error setting shape information.");
  EXPECT_TRUE(link.LumenfoldEnabled());
}

TEST_F(ModelTest, SetShapeTagsKeepsOnlyWhatIsAssignedAgain) {
  const auto shape = LinkedShape();
  clsShape link;
  link.ShapeItem(shape);
  link.SourceType(2);
  link.NewConnectionTagNumber("001");
  link.NewColumnName("Name");
  link.NewRow(1.5);
  link.SetShapeTags();
  EXPECT_EQ(shape->tags->items,
            (std::vector<std::pair<std::string, std::string>>{{"OTHER", "kept"},
                                                              {"CORVANE COLUMN TYPE", "2"},
                                                              {"CORVANE COLUMN TAG", "001"},
                                                              {"CORVANE COLUMN COLUMNNAME", "Name"},
                                                              {"CORVANE COLUMN ROW", "1.5"}}));
  EXPECT_EQ(link.ConnectionTagNumber(), "001");

  link.SourceType(2);
  link.SetShapeTags();
  EXPECT_EQ(shape->tags->items, (std::vector<std::pair<std::string, std::string>>{
                                    {"OTHER", "kept"}, {"CORVANE COLUMN TYPE", "2"}}));
  EXPECT_EQ(link.ConnectionTagNumber(), "");
  EXPECT_EQ(link.Row(), 0);
}

TEST_F(ModelTest, EverySourceTypeWritesItsOwnFields) {
  const std::pair<int, const char*> cases[] = {
      {1, "TYPE DATE FORMAT "},
      {2, "TYPE TAG COLUMNNAME ROW "},
      {3, "TYPE TAG COLUMNNAME ROW OBJECT FOLDER OBJECT EXTESION "},
      {4, "TYPE TAG "},
      {5, "TYPE "},
  };
  for (const auto& [type, expected] : cases) {
    const auto shape = std::make_shared<fakes::Shape>("x");
    clsShape link;
    link.ShapeItem(shape);
    link.SourceType(type);
    link.NewConnectionTagNumber("001");
    link.NewColumnName("c");
    link.NewRow(1);
    link.NewDateFormat("hh");
    link.NewObjectFolder("f");
    link.NewObjectExtension("e");
    link.SetShapeTags();
    std::string written;
    for (const auto& [name, value] : shape->tags->items) written += name.substr(15) + " ";
    EXPECT_EQ(written, expected);
  }

  const auto shape = std::make_shared<fakes::Shape>("x");
  clsShape link;
  link.ShapeItem(shape);
  link.SourceType(3);
  shape->tags->failOnAdd = true;
  link.SetShapeTags();
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Error saving shape tags. \r\nthe tag cannot be added");
}

TEST_F(ModelTest, AnObjectFolderIsStoredOnceAndKeptOnlyWhenAssignedAgain) {
  for (const char* none : {"-1", "-2"}) {
    const auto shape = std::make_shared<fakes::Shape>("photo");
    clsShape link;
    link.ShapeItem(shape);
    link.SourceType(3);
    link.NewObjectFolder("pics");
    link.NewObjectExtension("jpg");
    link.SetShapeTags();
    EXPECT_EQ((*shape->tags)["CORVANE COLUMN OBJECT FOLDER"], "pics");
    EXPECT_EQ(link.ObjectFolder() + link.ObjectExtension(), "picsjpg");

    link.SourceType(3);
    if (std::string_view(none) == "-2") {
      link.NewObjectFolder(none);
      link.NewObjectExtension(none);
    }
    link.SetShapeTags();
    EXPECT_EQ(shape->tags->Count(), 1) << none;
    EXPECT_EQ(link.ObjectFolder() + link.ObjectExtension(), "") << none;
  }
}

TEST_F(ModelTest, RemovingALinkLeavesForeignTags) {
  const auto shape = LinkedShape();
  clsShape link;
  link.ShapeItem(shape);
  link.RemoveLumenfold();
  EXPECT_EQ(shape->tags->items, (std::vector<std::pair<std::string, std::string>>{{"OTHER", "kept"}}));
  EXPECT_EQ(link.ColumnName(), "Price");
}

}  // namespace
}  // namespace LF2000
