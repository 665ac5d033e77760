// What is read of presentations in the binary format, whole and broken ones.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>

#include "ppt/Deck.h"
#include "ppt/Records.h"
#include "support/ErrorOf.h"
#include "support/OldDeck.h"

namespace ppt {

bool operator==(const Tag& a, const Tag& b) { return a.name == b.name && a.value == b.value; }
void PrintTo(const Tag& tag, std::ostream* out) { *out << tag.name << " = " << tag.value; }

namespace {

using support::atomOf;
using support::containerOf;
using support::numbers;
using support::OldDeckWriter;
using support::OldRecord;
using support::smallNumbers;
using support::utf16;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::uint32_t Rectangle = 1;

std::string fileOf(const std::string& name) {
  std::ifstream file(std::string(TEST_DATA) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

OldRecord kindOf(std::uint32_t number, std::uint32_t kind, std::uint32_t flags = 0) {
  return atomOf(type::ShapeKind, numbers({number, flags}), kind);
}

/// A shape of these records.
OldRecord shapeOf(std::uint32_t number, std::vector<OldRecord> more = {}, std::uint32_t kind = Rectangle,
                  std::uint32_t flags = 0) {
  more.insert(more.begin(), kindOf(number, kind, flags));
  return containerOf(type::Shape, std::move(more));
}

OldRecord groupOf(OldRecord own, std::vector<OldRecord> members) {
  members.insert(members.begin(), std::move(own));
  return containerOf(type::Group, std::move(members));
}

OldRecord clientData(std::vector<OldRecord> records) {
  return containerOf(type::ClientData, std::move(records));
}

OldRecord slideOf(std::vector<OldRecord> shapes, const std::vector<Tag>& tags = {}) {
  constexpr std::uint32_t Patriarch = 5;
  return containerOf(
      type::Slide,
      {containerOf(type::Drawing, {containerOf(type::DrawingContent,
                                               {groupOf(shapeOf(0, {}, 0, Patriarch), std::move(shapes))})}),
       support::tagsRecord(tags)});
}

OldRecord slideList(const std::vector<std::uint32_t>& slides, const std::vector<OldRecord>& texts = {}) {
  std::vector<OldRecord> records;
  for (const std::uint32_t slide : slides) {
    records.push_back(atomOf(type::SlidePersist, numbers({slide, 0, 0, 256 + slide, 0})));
    records.insert(records.end(), texts.begin(), texts.end());
  }
  return containerOf(type::SlideList, records);
}

OldRecord documentOf(OldRecord list, const std::vector<Tag>& tags = {}, std::vector<OldRecord> more = {}) {
  more.push_back(containerOf(type::SlideList, {atomOf(type::SlidePersist, numbers({77}))}, 1));
  more.push_back(std::move(list));
  more.push_back(containerOf(type::DocumentInfoList, {support::tagsRecord(tags)}));
  return containerOf(type::Document, std::move(more));
}

OldDeckWriter deckOf(const OldRecord& slide, const OldRecord& document = documentOf(slideList({2}))) {
  OldDeckWriter writer;
  writer.put(1, document);
  writer.put(2, slide);
  writer.save();
  return writer;
}

std::vector<Shape> shapesOf(std::vector<OldRecord> shapes,
                            const OldRecord& document = documentOf(slideList({2}))) {
  return readDeck(deckOf(slideOf(std::move(shapes)), document).file()).slides.at(0).shapes;
}

std::string errorOf(const std::string& bytes) {
  return support::errorOf([&] { static_cast<void>(readDeck(bytes)); });
}

TEST(OldDeck, RealFilesGiveTheirTags) {
  EXPECT_THAT(readDeck(fileOf("41246-2.ppt")).tags,
              ElementsAre(Tag{"DEFINEDINNAVIGATOR", "False"}, Tag{"BRANCHTO", "0"}));
  const Deck named = readDeck(fileOf("44296.ppt"));
  EXPECT_EQ(named.tags.size(), 2U);
  ASSERT_EQ(named.slides.at(0).shapes.size(), 3U);
  const Shape& title = named.slides[0].shapes[0];
  EXPECT_EQ(title.name, "Title 1");
  EXPECT_EQ(title.text, "PATTERNS IN ENTERPRISE DEVELOPMENT ");
  EXPECT_EQ(title.frame.left, 186 * 12700.0);
  EXPECT_EQ(title.frame.width, 498 * 12700.0);
}

TEST(OldDeck, ReadsTagsOfPresentationSlidesAndShapes) {
  OldDeckWriter writer;
  writer.put(1, documentOf(slideList({3, 2}), {{"CORVANE VERSION", "1"}}));
  writer.put(2, slideOf({shapeOf(2)}, {{"SECOND", "2"}}));
  writer.put(
      3, slideOf({shapeOf(1026), groupOf(shapeOf(1027, {clientData({support::tagsRecord({{"G", "g"}})})}),
                                         {shapeOf(1028, {clientData({support::tagsRecord({{"M", "m"}})})})})},
                 {{"FIRST", "1"}}));
  writer.save();
  const Deck deck = readDeck(writer.file());
  EXPECT_THAT(deck.tags, ElementsAre(Tag{"CORVANE VERSION", "1"}));
  ASSERT_EQ(deck.slides.size(), 2U);
  EXPECT_THAT(deck.slides[0].tags, ElementsAre(Tag{"FIRST", "1"}));
  EXPECT_THAT(deck.slides[1].tags, ElementsAre(Tag{"SECOND", "2"}));
  const std::vector<Shape>& shapes = deck.slides[0].shapes;
  ASSERT_EQ(shapes.size(), 2U);
  EXPECT_THAT(shapes[0].tags, IsEmpty());
  EXPECT_EQ(shapes[0].number, 2U);
  EXPECT_EQ(shapes[1].kind, Shape::Kind::Group);
  EXPECT_THAT(shapes[1].tags, ElementsAre(Tag{"G", "g"}));
  ASSERT_EQ(shapes[1].members.size(), 1U);
  EXPECT_THAT(shapes[1].members[0].tags, ElementsAre(Tag{"M", "m"}));
}

TEST(OldDeck, TheLastOfSeveralSavesCounts) {
  OldDeckWriter writer = deckOf(slideOf({shapeOf(2)}, {{"STATE", "old"}}));
  writer.put(2, slideOf({shapeOf(2), shapeOf(3)}, {{"STATE", "newer"}}));
  writer.save();
  writer.put(2, slideOf({shapeOf(2)}, {{"STATE", "newest"}}));
  writer.save();
  EXPECT_THAT(readDeck(writer.file()).slides.at(0).tags, ElementsAre(Tag{"STATE", "newest"}));
  const std::string dual =
      support::compoundFile({{"PowerPoint Document", "of PowerPoint 95"},
                             {"PP40", "of it, too"},
                             {"Current User", writer.user(), "PP97_DUALSTORAGE"},
                             {"PowerPoint Document", writer.stream(), "PP97_DUALSTORAGE"}});
  EXPECT_THAT(readDeck(dual).slides.at(0).tags, ElementsAre(Tag{"STATE", "newest"}));
}

TEST(OldDeck, KnowsKindsNamesAndPrograms) {
  constexpr std::uint32_t Deleted = 0x8;
  constexpr std::uint32_t OfAnObject = 0x10;
  constexpr std::uint32_t Connector = 0x100;
  const std::string name = utf16("Gate") + std::string(2, '\0');
  // Four numbers of two bytes; their header is not in the length.
  const std::string points = smallNumbers({4, 4, 2, 1, 2, 3, 4});
  const OldRecord properties =
      atomOf(type::Properties,
             smallNumbers({0x7F}) + numbers({1}) + smallNumbers({static_cast<int>(0xC145)}) + numbers({8}) +
                 smallNumbers({static_cast<int>(0x8380)}) +
                 numbers({static_cast<std::uint32_t>(name.size())}) + points + name,
             3);
  const OldRecord isTable = atomOf(type::MoreProperties, smallNumbers({0x39F}) + numbers({1}), 1);
  const OldRecord chart =
      containerOf(type::EmbeddedObject, {atomOf(type::Object, numbers({1, 0, 7, 0, 9, 0})),
                                         atomOf(type::String, utf16("Diagramm"), 1),
                                         atomOf(type::String, utf16("MSGraph.Chart.8"), 2)});
  const std::vector<Shape> shapes =
      shapesOf({shapeOf(2, {properties}), shapeOf(3, {}, 20), shapeOf(4, {}, 32, Connector),
                shapeOf(5, {}, 75), shapeOf(6, {}, 1, Deleted),
                shapeOf(7, {clientData({atomOf(type::ObjectReference, numbers({7}))})}, 75, OfAnObject),
                groupOf(shapeOf(8, {isTable}), {shapeOf(9)}),
                shapeOf(10, {clientData({atomOf(type::Placeholder, numbers({0, 13}))})})},
               documentOf(slideList({2}), {}, {containerOf(type::ExternalObjects, {chart})}));
  std::vector<Shape::Kind> kinds;
  for (const Shape& shape : shapes) kinds.push_back(shape.kind);
  using Kind = Shape::Kind;
  EXPECT_THAT(kinds, ElementsAre(Kind::Shape, Kind::Line, Kind::Line, Kind::Picture, Kind::Object,
                                 Kind::Table, Kind::Shape));
  EXPECT_EQ(shapes[0].name, "Gate");
  EXPECT_EQ(shapes[4].program, "MSGraph.Chart.8");
  EXPECT_EQ(shapes[6].placeholder, 13U);
}

TEST(OldDeck, PlacesMembersOfGroupsOnTheSlide) {
  constexpr double Unit = 1587.5;
  const auto shapes =
      shapesOf({groupOf(shapeOf(2, {atomOf(type::GroupFrame, numbers({100, 100, 300, 200})),
                                    atomOf(type::Anchor, smallNumbers({1000, 2000, 2400, 1100}))}),
                        {shapeOf(3, {atomOf(type::MemberAnchor, numbers({150, 100, 250, 200}))})}),
                shapeOf(4, {atomOf(type::Anchor, numbers({100000, 200000, 300000, 400000}))})});
  EXPECT_THAT(shapes.at(0).members.at(0).frame, FieldsAre(2100 * Unit, 1000 * Unit, 200 * Unit, 100 * Unit));
  EXPECT_THAT(shapes.at(1).frame, FieldsAre(200000 * Unit, 100000 * Unit, 100000 * Unit, 300000 * Unit));
}

TEST(OldDeck, FindsTextsInShapesAndInTheOutline) {
  const std::vector<OldRecord> outline{
      atomOf(type::TextHeader, numbers({0})), atomOf(type::TextBytes, "Title\x0B\xFC"),
      atomOf(type::TextHeader, numbers({1})),
      atomOf(type::TextCharacters, std::string("\xAC\x20\x3D\xD8\x00\xDE", 6))};
  const auto box = [](OldRecord record) { return containerOf(type::TextBox, {std::move(record)}); };
  const OldRecord own = containerOf(
      type::TextBox, {atomOf(type::TextHeader, numbers({4})), atomOf(type::TextBytes, "one\rtwo")});
  std::vector<std::string> texts;
  for (const Shape& shape :
       shapesOf({shapeOf(2, {box(atomOf(type::OutlineText, numbers({1})))}), shapeOf(3, {own}),
                 shapeOf(4, {box(atomOf(type::OutlineText, numbers({0})))}),
                 shapeOf(5, {box(atomOf(type::OutlineText, numbers({9})))})},
                documentOf(slideList({2}, outline)))) {
    texts.push_back(shape.text);
  }
  EXPECT_THAT(texts, ElementsAre("€😀", "one\rtwo", "Title\vü", ""));
}

TEST(OldDeck, SaysWhyAFileIsNone) {
  const OldDeckWriter writer = deckOf(slideOf({}));
  constexpr std::uint32_t Encrypted = 0xF3D1C4DF;
  const auto with = [](const std::string& user, const std::string& stream) {
    return support::compoundFile({{"Current User", user}, {"PowerPoint Document", stream}});
  };
  EXPECT_THAT(errorOf("PK\x03\x04"), HasSubstr("no OLE compound file"));
  EXPECT_THAT(errorOf(with(writer.user(Encrypted), writer.stream())),
              HasSubstr("it is encrypted. Remove its password"));
  OldDeckWriter keyed = writer;
  const std::string key = atomOf(type::UserEdit, numbers({256, 0, 0, 0, 1, 3, 1, 5})).bytes();
  const std::string after = writer.stream() + key;
  const std::string user =
      atomOf(type::CurrentUser,
             numbers({0x14, 0xE391C05F, static_cast<std::uint32_t>(writer.stream().size())}))
          .bytes();
  EXPECT_THAT(errorOf(with(user, after)), HasSubstr("it is encrypted"));
  EXPECT_THAT(errorOf(support::compoundFile({{"EncryptedPackage", "x"}})), HasSubstr("it is encrypted"));
  EXPECT_THAT(errorOf(support::compoundFile({{"PP40", "x"}, {"Text_Content", "x"}})),
              HasSubstr("PowerPoint 95"));
  EXPECT_THAT(errorOf(support::compoundFile({{"Workbook", "x"}})), HasSubstr("no presentation"));
}

/// The deck's stream with a number written over.
std::string damaged(OldDeckWriter writer, std::size_t at, std::uint32_t number) {
  std::string stream = writer.stream();
  stream.replace(at, 4, numbers({number}));
  return support::compoundFile({{"Current User", writer.user()}, {"PowerPoint Document", stream}});
}

TEST(OldDeck, EndsWithAReasonWhateverIsBroken) {
  constexpr std::size_t Edit = 36;
  OldDeckWriter twice = deckOf(slideOf({}));
  twice.save();
  const std::size_t edit = twice.stream().size() - Edit;
  const struct {
    std::size_t at;
    std::uint32_t number;
    const char* reason;
  } cases[] = {{edit + 16, static_cast<std::uint32_t>(edit), "lead in a circle"},
               {edit + 16, 0xFFFFFF00, "lead in a circle"},
               {edit + 20, 0xFFFFFF00, "outside of it"},
               {edit + 24, 99, "is missing"},
               {4, 0x7FFFFFFF, "longer than what it lies in"},
               // Of the first record in the document, not of the document.
               {12, 0x0000FFFF, "longer than what it lies in"}};
  for (const auto& each : cases) {
    EXPECT_THAT(errorOf(damaged(twice, each.at, each.number)), HasSubstr(each.reason)) << each.at;
  }
  const OldRecord often = documentOf(slideList(std::vector<std::uint32_t>(1000, 2)));
  EXPECT_THAT(errorOf(deckOf(slideOf({}), often).file()), HasSubstr("a slide is in it twice"));

  const std::string shape = shapeOf(2).bytes();
  OldRecord slide = slideOf({});
  std::string all;
  for (int i = 0; i < 200'001; ++i) all += shape;
  OldRecord* group = slide.find(type::Drawing)->find(type::DrawingContent)->find(type::Group);
  group->atom = group->records.front().bytes() + all;
  group->records.clear();
  EXPECT_THAT(errorOf(deckOf(slide).file()), HasSubstr("more shapes than anybody draws"));

  OldRecord deep = shapeOf(3);
  for (int i = 0; i < 200; ++i) deep = groupOf(shapeOf(2), {deep});
  EXPECT_THAT(errorOf(deckOf(slideOf({deep})).file()), HasSubstr("too deep"));

  std::string cut = twice.file();
  cut.resize(cut.size() / 2);
  EXPECT_THAT(errorOf(cut), HasSubstr("damaged or not complete"));
}

TEST(OldDeck, ObjectsThatOverlapAreNotReadOverAndOver) {
  // A slide within a slide within a slide: each is an object of its own.
  OldDeckWriter writer;
  OldRecord slide = slideOf({});
  for (int i = 0; i < 50; ++i) slide = containerOf(type::Slide, {slide, atomOf(0, std::string(4000, 'x'))});
  std::vector<std::uint32_t> ids;
  std::string stream = slide.bytes();
  std::string directory;
  for (std::uint32_t i = 0; i < 50; ++i) {
    ids.push_back(i + 2);
    directory += numbers({1U << 20U | (i + 2), i * 8});
  }
  const auto at = [&] { return static_cast<std::uint32_t>(stream.size()); };
  directory += numbers({1U << 20U | 1U, at()});
  stream += documentOf(slideList(ids)).bytes();
  const std::uint32_t place = at();
  stream += atomOf(type::PersistDirectory, directory).bytes();
  const std::uint32_t edit = at();
  stream += atomOf(type::UserEdit, numbers({256, 0, 0, place, 1, 60, 1})).bytes();
  const std::string user = atomOf(type::CurrentUser, numbers({0x14, 0xE391C05F, edit})).bytes();
  EXPECT_THAT(errorOf(support::compoundFile({{"Current User", user}, {"PowerPoint Document", stream}})),
              HasSubstr("its slides overlap"));
}

TEST(OldDeck, ChainsOfSectorsThatLeadInCirclesEnd) {
  const std::string file = deckOf(slideOf({})).file();
  const std::size_t table = file.size() - 512;
  for (std::size_t sector = 0; sector < 40; ++sector) {
    std::string circle = file;
    circle.replace(table + 4 * sector, 4, numbers({0}));
    // Whatever it led to, it is read or refused.
    static_cast<void>(errorOf(circle));
  }
  std::string circle = file;
  for (std::size_t at = table; at < table + 160; at += 4) circle.replace(at, 4, numbers({0}));
  EXPECT_THAT(errorOf(circle), HasSubstr("damaged or not complete"));
}

}  // namespace
}  // namespace ppt
