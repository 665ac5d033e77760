// Old presentations as decks: what LibreOffice draws, with the tags that it drops.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <thread>

#include "app/import/DeckImport.h"
#include "app/wiring/Environment.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/StoredConnections.h"
#include "deck/objects/Application.h"
#include "model/modTags.h"
#include "opc/Xml.h"
#include "ppt/Records.h"
#include "presentationml/ShapeNode.h"
#include "process/ChildProcess.h"
#include "process/OfficeCommand.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/OldDeck.h"
#include "support/TemporaryFolder.h"

namespace app {
namespace {

namespace fs = std::filesystem;
namespace type = ppt::type;
using support::atomOf;
using support::containerOf;
using support::numbers;
using support::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::shared_ptr<deck::Presentation> open(const std::string& bytes) {
  return std::make_shared<deck::Presentation>(opc::Package::fromBytes(bytes, "imported"), "", std::nullopt);
}

std::vector<ppt::Tag> tagsOf(deck::TagList& list) {
  std::vector<ppt::Tag> tags;
  for (const deck::Tag& tag : list.all()) tags.push_back({tag.name, tag.value});
  return tags;
}

/// Names and tags of a deck's shapes, as an old presentation would have them.
std::vector<ppt::Shape> shapesOf(deck::Presentation& deck, opc::Part& slide, pugi::xml_node parent) {
  std::vector<ppt::Shape> shapes;
  opc::xml::forEachPreferred(parent, [&](pugi::xml_node node) {
    if (!presentationml::isShape(node)) return;
    ppt::Shape& shape = shapes.emplace_back();
    shape.name = presentationml::shapeName(node);
    shape.tags = tagsOf(deck.tagStore().of(slide, node));
    if (opc::xml::isNamed(node, "p:grpSp")) shape.members = shapesOf(deck, slide, node);
  });
  return shapes;
}

ppt::Deck oldDeckOf(deck::Presentation& deck) {
  ppt::Deck old;
  old.tags = tagsOf(deck.tagStore().of(deck.part(), deck.part().xml().document_element()));
  for (std::int32_t i = 1; i <= deck.slideCount(); ++i) {
    opc::Part& slide = deck.slidePart(i);
    const pugi::xml_node root = slide.xml().document_element();
    old.slides.push_back(
        {tagsOf(deck.tagStore().of(slide, root)), shapesOf(deck, slide, presentationml::shapeTree(root))});
  }
  return old;
}

/// The presentations as LibreOffice saves them in the old format, in one run.
void saveAsOld(const std::vector<std::string>& decks, const TemporaryFolder& folder) {
  process::OfficeConversion conversion;
  conversion.profile = folder.path() / "profile";
  conversion.format = "ppt";
  conversion.out = folder.path();
  conversion.input = decks.front();
  std::vector<std::string> command = process::officeCommand(conversion);
  command.insert(command.end(), decks.begin() + 1, decks.end());
  process::ChildProcess office(command, (folder.path() / "log").string());
  while (!office.exitStatus()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

/// What a shape shows, by slide and name.
using Links = std::map<std::pair<std::int32_t, std::string>, std::string>;
Links linksOf(deck::Presentation& deck) {
  Links links;
  for (std::int32_t slide = 1; slide <= deck.slideCount(); ++slide) {
    for (const LinkedShape& link : linkedShapes(deck, slide)) {
      links[{slide, link.name}] = std::to_string(link.sourceType) + ' ' + linkText(link);
    }
  }
  return links;
}

std::vector<std::string> connectionsOf(deck::Presentation& deck) {
  std::vector<std::string> tags;
  LF2000::modTags::ForEachTag(
      *deck.Tags(), LF2000::modTags::Connection,
      [&](const std::string& number, const std::string& value) { tags.push_back(number + value); });
  return tags;
}

TEST(Import, TheSamplesKeepEveryLink) {
  Environment environment;
  const TemporaryFolder folder;
  const std::vector<std::string> names{"departures", "shop", "plant"};
  std::vector<std::string> paths;
  for (const std::string& name : names) {
    paths.push_back(std::string(SAMPLES_FOLDER) + "/" + name + "/" + name + ".pptx");
  }
  saveAsOld(paths, folder);
  for (std::size_t i = 0; i < names.size(); ++i) {
    SCOPED_TRACE(names[i]);
    const auto sample = std::make_shared<deck::Application>()->open(paths[i]);
    const std::string old = support::withTags(folder.read(names[i] + ".ppt"), oldDeckOf(*sample));
    const ImportedDeck imported = importDeck(old, names[i], environment.loop(), {});
    EXPECT_THAT(imported.lost, IsEmpty());
    const auto deck = open(imported.bytes);
    const Links links = linksOf(*deck);
    EXPECT_GT(links.size(), 20U);
    EXPECT_EQ(links, linksOf(*sample));
    EXPECT_EQ(connectionsOf(*deck), connectionsOf(*sample));
    for (std::int32_t slide = 1; slide <= deck->slideCount(); ++slide) {
      EXPECT_EQ(deck->Slides()->Item(slide)->Tags()->Count(), sample->Slides()->Item(slide)->Tags()->Count());
    }
  }
}

/// A program in LibreOffice's place, which gives this deck whatever it is to convert.
class StandIn {
 public:
  explicit StandIn(const std::string& deck, const std::string& before = {}) {
    static_cast<void>(folder_.write("made.pptx", deck));
    conversion.program = folder_.write(
        "soffice",
        "#!/bin/sh\ncd '" + folder_.path().string() + "'\n" + before +
            "for out; do input=\"$last\"; last=\"$out\"; done\nmkdir -p \"$input\" && cp made.pptx "
            "\"$input/deck.pptx\"\n");
    fs::permissions(conversion.program, fs::perms::owner_all);
  }
  ImportedDeck import(const std::string& bytes) {
    return importDeck(bytes, "'old.ppt'", environment_.loop(), conversion);
  }
  std::string errorOf(const std::string& bytes) {
    return support::errorOf([&] { static_cast<void>(import(bytes)); });
  }

  PresentationConversion conversion;

 private:
  Environment environment_;
  TemporaryFolder folder_;
};

/// A text of one slide's old version, at a place of its own in points.
support::OldRecord oldText(std::uint32_t number, const std::string& text, int left,
                           const std::vector<ppt::Tag>& tags) {
  constexpr int UnitsPerPoint = 8;
  return containerOf(
      type::Shape,
      {atomOf(type::ShapeKind, numbers({number, 0}), 1),
       atomOf(type::Anchor, support::smallNumbers(
                                {0, left * UnitsPerPoint, (left + 50) * UnitsPerPoint, 20 * UnitsPerPoint})),
       containerOf(type::ClientData, {support::tagsRecord(tags)}),
       containerOf(type::TextBox, {atomOf(type::TextHeader, numbers({4})), atomOf(type::TextBytes, text)})});
}

/// A slide, a master or a page of notes.
support::OldRecord page(std::uint32_t kind, std::vector<support::OldRecord> shapes) {
  support::OldRecord tree = containerOf(type::Group, {containerOf(type::Shape, {})});
  for (support::OldRecord& shape : shapes) tree.records.push_back(std::move(shape));
  return containerOf(kind, {containerOf(type::Drawing, {containerOf(type::DrawingContent, {tree})})});
}

/// A list of pages by their numbers in the file.
support::OldRecord listOf(const std::vector<std::uint32_t>& pages, std::uint32_t instance) {
  std::vector<support::OldRecord> all;
  for (const std::uint32_t number : pages) all.push_back(atomOf(type::SlidePersist, numbers({number})));
  return containerOf(type::SlideList, std::move(all), instance);
}

/// A file of these pages, the document's records first.
std::string oldFile(std::vector<support::OldRecord> document, const std::vector<support::OldRecord>& pages) {
  support::OldDeckWriter writer;
  std::uint32_t number = 1;
  writer.put(number, containerOf(type::Document, std::move(document)));
  for (const support::OldRecord& each : pages) writer.put(++number, each);
  writer.save();
  return writer.file();
}

std::string oldDeck(std::vector<support::OldRecord> shapes) {
  return oldFile({listOf({2}, 0)}, {page(type::Slide, std::move(shapes))});
}

std::string newText(int id, const std::string& name, const std::string& text, int left,
                    const std::string& nvPr = {}) {
  constexpr int EmuPerPoint = 12700;
  std::string shape = support::textShape(id, name, text, nvPr);
  const std::string frame = "<a:xfrm><a:off x=\"" + std::to_string(left * EmuPerPoint) +
                            "\" y=\"0\"/><a:ext cx=\"" + std::to_string(50 * EmuPerPoint) + "\" cy=\"" +
                            std::to_string(20 * EmuPerPoint) + "\"/></a:xfrm>";
  const std::size_t at = shape.find("<p:spPr");
  const std::size_t end = shape.find('>', at);
  if (shape[end - 1] == '/') return shape.replace(at, end + 1 - at, "<p:spPr>" + frame + "</p:spPr>");
  const std::size_t close = shape.find("</p:spPr>", end);
  return shape.replace(at, close - at, "<p:spPr>" + frame);
}

std::string newDeck(const std::string& shapes) { return support::DeckBuilder::of(shapes).bytes(); }

/// name=value of the tag A of each shape.
std::vector<std::string> placed(const ImportedDeck& imported) {
  const auto deck = open(imported.bytes);
  std::vector<std::string> found;
  for (std::int32_t i = 1; i <= deck->Slides()->Item(1)->Shapes()->Count(); ++i) {
    const auto shape = deck->Slides()->Item(1)->Shapes()->Item(i);
    if (shape->Tags()->Count() > 0) found.push_back(shape->Name() + "=" + shape->Tags()->Value(1));
  }
  return found;
}

TEST(Import, ShapesThatCameOrWentLeadNoTagAstray) {
  const std::string old = oldDeck({oldText(2, "Rye", 0, {{"A", "1"}}), oldText(3, "Oat", 100, {{"A", "2"}}),
                                   oldText(4, "Plum", 200, {{"A", "3"}, {"B", "Server=x;Password=secret"}})});
  // A number was added, as on the old master; the second text is gone.
  StandIn office(newDeck(newText(2, "", "Rye", 0) + newText(3, "Text 4", "Another", 300) +
                         newText(4, "", "Plum", 200) +
                         newText(9, "PlaceHolder 1", "1", 400, "<p:ph type=\"sldNum\"/>")));
  const ImportedDeck some = office.import(old);
  EXPECT_THAT(placed(some), ElementsAre("Text 2=1", "Text 4 (2)=3"));
  EXPECT_THAT(some.lost, ElementsAre("Slide 1, 'Text 3' (Oat): A = '2'"));
  EXPECT_EQ(some.tags, 3U);
  EXPECT_EQ(some.taggedShapes, 2U);
  // Of two that look alike one is gone: nobody knows which.
  StandIn less(newDeck(newText(2, "", "Same", 0)));
  const ImportedDeck none = less.import(oldDeck(
      {oldText(2, "Same", 0, {{"A", "1"}, {"B", "Server=x;Password=secret"}}), oldText(3, "Same", 0, {})}));
  EXPECT_THAT(placed(none), IsEmpty());
  ASSERT_EQ(none.lost.size(), 1U);
  EXPECT_THAT(none.lost[0], HasSubstr("A = '1', B = 'Server=x"));
  EXPECT_THAT(none.lost[0], Not(HasSubstr("secret")));
}

TEST(Import, TagsOfMastersAndNotesAreListed) {
  support::OldRecord notes = page(type::Notes, {oldText(2, "Said", 0, {})});
  notes.records.push_back(support::tagsRecord({{"C", "3"}}));
  const std::string old = oldFile({listOf({3}, 1), listOf({2}, 0), listOf({4}, 2), listOf({99}, 2)},
                                  {page(type::Slide, {oldText(2, "Rye", 0, {{"A", "1"}})}),
                                   page(type::MainMaster, {oldText(2, "Logo", 0, {{"B", "2"}})}), notes});
  const ImportedDeck imported = StandIn(newDeck(newText(2, "", "Rye", 0))).import(old);
  EXPECT_THAT(placed(imported), ElementsAre("Text 2=1"));
  EXPECT_THAT(imported.lost, ElementsAre("Master 1, 'Text 2' (Logo): B = '2'", "Notes page 1: C = '3'"));
}

TEST(Import, NoFileIsReadThatTheOldOneIsLinkedTo) {
  Environment environment;
  const TemporaryFolder folder;
  const std::string picture = std::string(SAMPLES_FOLDER) + "/shop/pictures/flat-white.png";
  ASSERT_TRUE(fs::exists(picture));
  saveAsOld({folder.write(
                "linked.fodp",
                R"(<?xml version="1.0"?><office:document
 xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0" xmlns:xlink="http://www.w3.org/1999/xlink"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.presentation"><office:body><office:presentation>
<draw:page><draw:frame svg:width="5cm" svg:height="5cm"><draw:image xlink:href="file://)" +
                    picture +
                    R"("/></draw:frame></draw:page></office:presentation></office:body></office:document>)")},
            folder);
  const std::string old = folder.read("linked.ppt");
  ASSERT_THAT(old, HasSubstr(support::utf16("flat-white.png"))) << "the path came along";
  const auto deck = open(importDeck(old, "linked", environment.loop(), {}).bytes);
  for (const opc::Part* part : deck->package().parts()) {
    EXPECT_FALSE(part->name().starts_with("ppt/media/")) << part->name();
  }
}

TEST(Import, TellsOfGraphsThatStayObjects) {
  const support::OldRecord graph =
      containerOf(type::EmbeddedObject, {atomOf(type::Object, numbers({1, 0, 7, 0, 9, 0})),
                                         atomOf(type::String, support::utf16("MSGraph.Chart.8"), 2)});
  const support::OldRecord shape = containerOf(
      type::Shape, {atomOf(type::ShapeKind, numbers({2, 0x10}), 75),
                    containerOf(type::ClientData, {atomOf(type::ObjectReference, numbers({7}))})});
  const std::string old =
      oldFile({containerOf(type::ExternalObjects, {graph}), listOf({2}, 0)}, {page(type::Slide, {shape})});
  StandIn office(
      newDeck(support::graphicFrame(4, "", "http://schemas.openxmlformats.org/presentationml/2006/ole",
                                    R"(<p:oleObj progId="MSGraph.Chart.8"/>)")));
  EXPECT_THAT(
      office.import(old).warnings,
      ElementsAre("Slide 1, 'Object 2': it is an embedded graph (MSGraph.Chart.8), which stays an object and "
                  "shows no data. Put a chart in its place."));
}

TEST(Import, FailsWithTheReason) {
  const std::string old = oldDeck({});
  support::DeckBuilder two;
  two.addSlide();
  two.addSlide();
  const struct {
    const char* before;
    std::string made, old;
    const char* why;
  } cases[] = {
      {"", newDeck(""), "PK",
       "'old.ppt' cannot be imported: it is no OLE compound file, so no old presentation."},
      {"echo 'Error: no room'\nexit 1\n", newDeck(""), old,
       "LibreOffice cannot convert it (Error: no room)."},
      {"", "no archive", old, "cannot be imported"},
      {"", two.bytes(), old, "LibreOffice makes 2 slides of its 1."},
  };
  for (const auto& c : cases) EXPECT_THAT(StandIn(c.made, c.before).errorOf(c.old), HasSubstr(c.why));
  StandIn missing(newDeck(""));
  missing.conversion.program = "/nonexistent/soffice";
  EXPECT_THAT(missing.errorOf(old), HasSubstr("is not installed (apt install libreoffice-impress)"));
  StandIn slow(newDeck(""), "sleep 3600\n");
  slow.conversion.timeout = std::chrono::milliseconds(50);
  EXPECT_THAT(slow.errorOf(old), HasSubstr("did not convert it within 1 s"));
  slow.conversion.isCancelled = [] { return true; };
  EXPECT_THAT(slow.errorOf(old), HasSubstr("was cancelled"));
}

}  // namespace
}  // namespace app
