// The copy of a presentation that is sent: its paths and its tags.

#include "model/modSending.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "model/modDistributionTags.h"

namespace LF2000::test {
namespace {

using host::SendingWay;
using testing::ElementsAre;
using testing::HasSubstr;

struct SendingTest : testing::Test {
  SendingTest() {
    deck.tags->items = {
        {"CORVANE VERSION", "1"},
        {"CORVANE CONNECTION001", "0\tToday\tdata\\today.txt\t-1\t"},
        {"CORVANE CONNECTION002", "0\tShared\t\\\\server\\share\\list.csv\t-1\t"},
        {"CORVANE CONNECTION003", "0\tOwn\t[LUMENFOLDFOLDER]/own.txt\t-1\t"},
        {"CORVANE CONNECTION004",
         "1\tLines\tProvider=SQLite;Data Source=/data/plant.db;Password=x\tSELECT 1\t\t1000\t"},
        {"CORVANE CONNECTION005",
         "1\tServer\tProvider=SQLOLEDB;Data Source=sql1;Initial Catalog=shop\tSELECT 1\t\t1000\t"},
        {"CORVANE CONNECTION006", "unreadable"}};
    fakes::Slide& slide = deck.Add();
    Picture(slide, "beside", "");
    Picture(slide, "below", "pictures");
    Picture(slide, "again", "pictures");
    Picture(slide, "own", "[LUMENFOLDFOLDER]\\photos");
  }
  static void Picture(fakes::Slide& slide, const std::string& name, const std::string& folder) {
    fakes::Shape& shape = slide.AddField(name, 1, "001", "Photo", 3);
    shape.tags->Add("CORVANE COLUMN OBJECT FOLDER", folder);
    shape.tags->Add("CORVANE COLUMN OBJECT EXTESION", "png");
  }
  std::vector<std::string> Redirect(SendingWay way) {
    host::EnclosurePlaces places(deck.fullName);
    std::vector<std::string> told;
    for (const auto& each : modSending::Redirect(deck, way, deck.fullName, places)) {
      told.push_back(each.Source + (each.IsFolder ? "/*." + each.Extension : "") + " > " + each.Path);
    }
    return told;
  }
  [[nodiscard]] std::string Connection(int number) const {
    return (*deck.tags)["CORVANE CONNECTION00" + std::to_string(number)];
  }
  [[nodiscard]] std::string Folder(std::size_t shape) const {
    return (*deck.slides[0]->shapes[shape]->tags)["CORVANE COLUMN OBJECT FOLDER"];
  }

  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> presentation = std::make_shared<fakes::Presentation>();
  fakes::Presentation& deck = *presentation;
};

TEST_F(SendingTest, LivePathsBecomeAbsolute) {
  EXPECT_THAT(
      Redirect(SendingWay::Live),
      ElementsAre("/decks/data/today.txt > data/today.txt", "\\\\server\\share\\list.csv > files/list.csv",
                  "/data/plant.db > files/plant.db", "/decks/*.png > ", "/decks/pictures/*.png > pictures"));
  EXPECT_THAT(Connection(1), HasSubstr("\t/decks/data/today.txt\t"));
  EXPECT_THAT(Connection(2), HasSubstr("\t\\\\server\\share\\list.csv\t"));
  EXPECT_THAT(Connection(3), HasSubstr("\t[LUMENFOLDFOLDER]/own.txt\t"));
  EXPECT_THAT(Connection(4), HasSubstr("Data Source=/data/plant.db;Password=x\t"));
  EXPECT_THAT(Connection(5), HasSubstr("Data Source=sql1;Initial Catalog=shop\t"));
  EXPECT_EQ(Connection(6), "unreadable");
  EXPECT_EQ(Folder(0), "/decks");
  EXPECT_EQ(Folder(1), "/decks/pictures");
  EXPECT_EQ(Folder(3), "[LUMENFOLDFOLDER]\\photos");
  // What else is said of a picture stays.
  EXPECT_EQ((*deck.slides[0]->shapes[1]->tags)["CORVANE COLUMN COLUMNNAME"], "Photo");
}

TEST_F(SendingTest, FilesGoAlongAndAreNamedByTheirPlaces) {
  EXPECT_THAT(
      Redirect(SendingWay::Files),
      ElementsAre("/decks/data/today.txt > data/today.txt", "\\\\server\\share\\list.csv > files/list.csv",
                  "/decks/own.txt > own.txt", "/data/plant.db > files/plant.db", "/decks/*.png > ",
                  "/decks/pictures/*.png > pictures", "/decks\\photos/*.png > photos"));
  EXPECT_THAT(Connection(1), HasSubstr("\tdata/today.txt\t"));
  EXPECT_THAT(Connection(3), HasSubstr("\town.txt\t"));
  EXPECT_THAT(Connection(4), HasSubstr("Data Source=files/plant.db;Password=x\t"));
  EXPECT_THAT(Connection(5), HasSubstr("Data Source=sql1;"));
  EXPECT_EQ(Folder(0), "");
  EXPECT_EQ(Folder(3), "photos");
}

TEST_F(SendingTest, TagsOfADistributionStandInTheirOrder) {
  fakes::Tags& tags = *deck.tags;
  tags.items = {{"CORVANE DISTRIBUTION HOURS", "08:00-09:00"}, {"OTHER", "1"}};
  modDistributionTags::Write(tags,
                             {{"hall-1"}, {basic::DateFrom(2026, 12, 1), {}, "mon-fri", "06:00-22:00"}});
  std::string names;
  for (const auto& tag : tags.items) names += tag.first + ";";
  EXPECT_EQ(names,
            "OTHER;CORVANE DISTRIBUTION START;CORVANE DISTRIBUTION STOP;CORVANE DISTRIBUTION COMPUTER;"
            "CORVANE DISTRIBUTION DAYS;CORVANE DISTRIBUTION HOURS;");
  modDistributionTags::Write(tags, {});
  EXPECT_EQ(tags["CORVANE DISTRIBUTION DAYS"] + tags["CORVANE DISTRIBUTION COMPUTER"], "(none)(none)");
}

}  // namespace
}  // namespace LF2000::test
