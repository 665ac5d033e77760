#include "opc/Package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "basic/Error.h"
#include "basic/Strings.h"

#include "support/DeckBuilder.h"

namespace opc::test {
namespace {

using support::DeckBuilder;
using support::storedEntries;
using support::StoredEntry;
using support::textShape;
using support::zipOf;
using testing::HasSubstr;

constexpr std::string_view SlideName = "ppt/slides/slide1.xml";

DeckBuilder twoSlides() {
  DeckBuilder deck;
  deck.addSlide(textShape(2, "Price", "12.50"));
  deck.addSlide(textShape(2, "Time", "noon"));
  return deck;
}

std::string packed(Package& package) {
  std::string bytes = package.serialize();
  package.rebase(bytes);
  return bytes;
}

TEST(PackageTest, AnUntouchedPackageIsSavedByteForByte) {
  const std::string bytes = zipOf(twoSlides().entries(), "a comment");
  const auto package = Package::fromBytes(bytes, "test.pptx");
  for (Part* part : package->parts()) {
    static_cast<void>(part->bytes());
    if (part->name().ends_with(".xml")) static_cast<void>(part->xml());
    static_cast<void>(part->relationships());
  }
  EXPECT_EQ(package->serialize(), bytes);
}

TEST(PackageTest, WhatIsNotUnderstoodSurvivesAChange) {
  const std::string odd =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
      "<!-- before --><p:sld xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\" "
      "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
      "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" xmlns:x=\"urn:other\" "
      "mc:Ignorable=\"x\"> <p:cSld name=\"a&#09;b &lt;&quot;'\">\n\t<?target some data?><x:own x:v=\"1\"> "
      "</x:own>"
      "<p:spTree/><mc:AlternateContent><mc:Choice Requires=\"x\"><x:new/></mc:Choice><mc:Fallback/>"
      "</mc:AlternateContent><![CDATA[<raw>]]><a:t> &amp; \xC3\xA9&gt;</a:t></p:cSld></p:sld>";
  DeckBuilder deck = DeckBuilder::of();
  deck.part(std::string(SlideName), odd);
  const auto package = deck.package();
  static_cast<void>(package->part(SlideName).xml());
  package->part(SlideName).markChanged();
  EXPECT_EQ(package->part(SlideName).bytes(), odd);
}

TEST(PackageTest, PartsAreFoundWhateverTheCaseAndTheSlash) {
  const auto package = twoSlides().package();
  Part* part = package->find(SlideName);
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(package->find("/PPT/Slides/SLIDE1.xml"), part);
  EXPECT_EQ(package->find("ppt/slides/slide9.xml"), nullptr);
  EXPECT_EQ(part->contentType(), "application/vnd.openxmlformats-officedocument.presentationml.slide+xml");
  EXPECT_EQ(package->part("ppt/theme/theme1.xml").contentType(),
            "application/vnd.openxmlformats-officedocument.theme+xml");
}

TEST(PackageTest, TargetsAreResolvedAsUris) {
  const std::pair<const char*, const char*> cases[] = {
      {"../media/image1.png", "ppt/media/image1.png"},
      {"/ppt/media/image1.png", "ppt/media/image1.png"},
      {"./../media/./image1.png#frag", "ppt/media/image1.png"},
      {"../media/two%20words.png", "ppt/media/two words.png"},
      {"../../../ppt/media/image1.png", "nowhere"},
      {"../media/other.png", "nowhere"},
      {"", "nowhere"}};
  DeckBuilder deck = DeckBuilder::of();
  deck.part("ppt/media/image1.png", "one");
  deck.part("ppt/media/two words.png", "two");
  std::vector<std::string> ids;
  for (const auto& each : cases) ids.push_back(deck.relate(1, "image", each.first));
  const std::string external = deck.relate(1, "image", "../media/image1.png", true);
  const auto package = deck.package();
  Part& slide = package->part(SlideName);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    const Part* target = slide.target(ids[i]);
    EXPECT_EQ(target == nullptr ? "nowhere" : target->name(), cases[i].second) << cases[i].first;
  }
  EXPECT_EQ(slide.target(external), nullptr);
  EXPECT_TRUE(slide.relationship(external)->external);
}

TEST(PackageTest, PartsComeAndGoWithTheirTypeAndRelationship) {
  const auto package = twoSlides().package();
  const std::string original = package->serialize();
  Part& slide = package->part(SlideName);
  Part& added = package->add(package->freeName("ppt/tags/tag", ".xml"), "application/x-test", "<a/>");
  const std::string id = package->addRelationship(slide, "urn:types/tags", added);
  EXPECT_THROW(package->add("PPT/tags/TAG1.xml", "x", ""), basic::Error);
  packed(*package);
  EXPECT_EQ(slide.target(id), &added);

  const auto reopened = Package::fromBytes(package->serialize(), "again");
  Part* found = reopened->part(SlideName).target(id);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->name(), "ppt/tags/tag1.xml");
  EXPECT_EQ(found->contentType(), "application/x-test");
  EXPECT_EQ(found->bytes(), "<a/>");
  EXPECT_EQ(reopened->part(SlideName).relationship(id)->target, "../tags/tag1.xml");

  const std::string later =
      package->addRelationship(slide, "urn:types/other", package->part("ppt/theme/theme1.xml"));
  package->removeRelationship(slide, id);
  EXPECT_EQ(slide.target(id), nullptr);
  EXPECT_EQ(slide.target(later)->name(), "ppt/theme/theme1.xml");
  package->removeRelationship(slide, later);
  package->remove(added);
  EXPECT_EQ(package->find("ppt/tags/tag1.xml"), nullptr);
  const auto names = [](const std::string& zip) {
    std::vector<std::string> result;
    for (const StoredEntry& entry : storedEntries(zip)) result.push_back(entry.name);
    return result;
  };
  EXPECT_EQ(names(packed(*package)), names(original));
  // All but the line break behind the declaration, which carries no meaning.
  const std::string types(Package::fromBytes(original, "original")->part("[Content_Types].xml").bytes());
  EXPECT_EQ(package->part("[Content_Types].xml").bytes(), basic::Replace(types, "\r\n", ""));

  // One comes back between two saves.
  package->add("ppt/tags/tag1.xml", "application/x-test", "<old/>");
  packed(*package);
  package->remove(package->part("ppt/tags/tag1.xml"));
  package->add("ppt/tags/tag1.xml", "application/x-test", "<new/>");
  EXPECT_EQ(Package::fromBytes(packed(*package), "again")->part("ppt/tags/tag1.xml").bytes(), "<new/>");
}

TEST(PackageTest, OtherPrefixesAreReadAsTheUsualOnes) {
  DeckBuilder deck = DeckBuilder::of();
  deck.part(std::string(SlideName),
            "<sld xmlns=\"http://schemas.openxmlformats.org/presentationml/2006/main\" "
            "xmlns:d=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
            "xmlns:rel=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" show=\"0\">"
            "<cSld><spTree><pic><d:blip rel:embed=\"rId1\"/></pic></spTree></cSld></sld>");
  const auto package = deck.package();
  Part& slide = package->part(SlideName);
  const pugi::xml_node root = slide.xml().child("p:sld");
  EXPECT_FALSE(root.attribute("show").as_bool(true));
  EXPECT_STREQ(
      root.child("p:cSld").child("p:spTree").child("p:pic").child("a:blip").attribute("r:embed").value(),
      "rId1");
  slide.markChanged();
  const std::string written(slide.bytes());
  for (const char* prefix : {"xmlns:p=", "xmlns:a=", "xmlns:r="}) EXPECT_THAT(written, HasSubstr(prefix));
}

TEST(PackageTest, AnotherEncodingIsReadAndWrittenAsUtf8) {
  std::string utf16 = "\xFF\xFE";
  for (char c : std::string("<?xml version=\"1.0\" encoding=\"UTF-16\"?><p:sld><b v=\"x\"/></p:sld>")) {
    utf16.append({c, '\0'});
  }
  DeckBuilder deck = DeckBuilder::of();
  deck.part(std::string(SlideName), utf16);
  const auto package = deck.package();
  static_cast<void>(package->part(SlideName).xml());
  package->part(SlideName).markChanged();
  EXPECT_EQ(package->part(SlideName).bytes(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><p:sld><b v=\"x\"/></p:sld>");
}

}  // namespace
}  // namespace opc::test
