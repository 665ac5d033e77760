#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "deck/objects/Application.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

// What is no presentation, or a broken one, is refused with a sentence that
// names the file and tells why.

namespace deck::test {
namespace {

using support::compoundFile;
using support::DeckBuilder;
using support::errorOf;
using support::TemporaryFolder;
using support::textShape;
using support::ZipEntry;
using support::zipOf;
using testing::AllOf;
using testing::HasSubstr;

DeckBuilder oneSlide() { return DeckBuilder::of(textShape(2, "Price", "12.50")); }

std::string withPart(const std::string& name, const std::string& content) {
  DeckBuilder deck = oneSlide();
  deck.part(name, content);
  return deck.bytes();
}

std::string without(const std::string& name) {
  DeckBuilder deck = oneSlide();
  deck.removePart(name);
  return deck.bytes();
}

std::string withEntry(ZipEntry entry) {
  std::vector<ZipEntry> entries = oneSlide().entries();
  entries.push_back(std::move(entry));
  return zipOf(entries);
}

std::string corrupted() {
  std::string bytes = oneSlide().bytes();
  const std::size_t name = bytes.find("ppt/slides/slide1.xml");
  bytes[name + 60] = static_cast<char>(bytes[name + 60] ^ 0x55);
  return bytes;
}

std::string nested() {
  std::string open;
  std::string close;
  for (int i = 0; i < 200000; ++i) {
    open += "<a>";
    close += "</a>";
  }
  return open + close;
}

/// No part is big enough to be asked about, all of them together are.
std::string manyBlanks() {
  std::vector<ZipEntry> entries = oneSlide().entries();
  const std::string blank(7U << 20U, ' ');
  for (int i = 0; i < 10; ++i) entries.push_back({"ppt/media/" + std::to_string(i), blank});
  return zipOf(entries);
}

struct BadDeck {
  const char* title;
  std::string bytes;
  const char* says;
};

TEST(BadDeckTest, IsRefusedWithTheReason) {
  const std::string whole = oneSlide().bytes();
  const std::string slide = "ppt/slides/slide1.xml";
  const std::vector<BadDeck> cases{
      {"empty file", "", "the file is empty"},
      {"text", "Dear colleague,", "no ZIP archive"},
      {"half a deck", whole.substr(0, whole.size() / 2), "damaged or not complete"},
      {"no end record", whole.substr(0, whole.size() - 30), "damaged or not complete"},
      {"flipped byte", corrupted(), "ppt/slides/slide1.xml"},
      {"encrypted", compoundFile("EncryptedPackage"), "encrypted"},
      {"binary", compoundFile("PowerPoint Document"), "binary format of PowerPoint 97 to 2003"},
      {"other compound file", compoundFile("WordDocument"), "OLE compound file"},
      {"no content types", without("[Content_Types].xml"), "[Content_Types].xml is missing"},
      {"no relationships", without("_rels/.rels"), "presentation part is missing"},
      {"no presentation part", without("ppt/presentation.xml"), "presentation part is missing"},
      {"no slide part", without(slide), "slide 1: its part slides/slide1.xml is missing"},
      {"no slide relationship", without("ppt/_rels/presentation.xml.rels"),
       "relationship 'rId101', which is missing"},
      {"another document", withPart("ppt/presentation.xml", "<w:document/>"), "no presentation"},
      {"not a slide", withPart(slide, "<p:sldLayout/>"), "ppt/slides/slide1.xml holds no slide"},
      {"open tag", withPart(slide, "<p:sld>\n  <p:cSld>\n</p:sld>"),
       "part ppt/slides/slide1.xml is not well-formed XML: line 3, column"},
      {"no XML", withPart(slide, "slide"), "part ppt/slides/slide1.xml is not well-formed XML"},
      {"declared entities",
       withPart(slide,
                "<!DOCTYPE p:sld [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;\">]><p:sld>&b;</p:sld>"),
       "document type declaration"},
      {"external entity", withPart(slide, "<!DOCTYPE p:sld SYSTEM \"file:///etc/passwd\"><p:sld/>"),
       "document type declaration"},
      {"bottomless nesting", withPart(slide, nested()), "nested too deeply"},
      {"path upwards", withEntry({"../../etc/cron.d/x", "x"}), "leads out of the archive"},
      {"path upwards, backslashes", withEntry({"ppt\\..\\..\\x", "x"}), "leads out of the archive"},
      {"absolute path", withEntry({"/etc/passwd", "x"}), "leads out of the archive"},
      {"two of a name", withEntry({"PPT/Slides/Slide1.xml", "<p:sld/>"}), "two entries of the name"},
      {"bomb by ratio", withEntry({"ppt/media/a.bin", std::string(64U << 20U, '\0')}), "more than 300 times"},
      {"bomb of many", manyBlanks(), "it would inflate to more than 300 times"},
      {"bomb by size", withEntry({"ppt/media/a.bin", "x", true, 0x5A21, 0, 0x40000000}),
       "would inflate to 1024 MB"},
  };
  for (const BadDeck& bad : cases) {
    SCOPED_TRACE(bad.title);
    const TemporaryFolder folder;
    const std::string path = folder.write("bad.pptx", bad.bytes);
    const auto application = std::make_shared<Application>();
    EXPECT_THAT(errorOf([&] { application->open(path); }), AllOf(HasSubstr(bad.says), HasSubstr(path)));
    EXPECT_EQ(application->Presentations()->Count(), 0);
  }
}

TEST(BadDeckTest, ASizeThatLiesIsFoundOut) {
  for (const std::uint32_t claimed : {1U, 1000U}) {
    DeckBuilder deck = oneSlide();
    std::vector<ZipEntry> entries = deck.entries();
    entries.push_back({"ppt/media/a.bin", "twelve bytes", true, 0x5A21, 0, claimed});
    const auto package = opc::Package::fromBytes(zipOf(entries), "liar.pptx");
    EXPECT_THAT(errorOf([&] { static_cast<void>(package->part("ppt/media/a.bin").bytes()); }),
                HasSubstr("a.bin"));
  }
}

TEST(BadDeckTest, TheWholeMayNotInflateBeyondItsLimit) {
  opc::Limits limits;
  limits.totalBytes = 1000;
  EXPECT_THAT(
      errorOf([&] { static_cast<void>(opc::Package::fromBytes(oneSlide().bytes(), "big.pptx", limits)); }),
      HasSubstr("would inflate to more than"));
}

TEST(BadDeckTest, WhatIsNoReadableFileIsNamed) {
  const TemporaryFolder folder;
  const auto application = std::make_shared<Application>();
  const std::string missing = (folder.path() / "missing.pptx").string();
  EXPECT_THAT(errorOf([&] { application->open(missing); }),
              AllOf(HasSubstr(missing), HasSubstr("No such file")));
  EXPECT_THAT(errorOf([&] { application->open(folder.path().string()); }), HasSubstr("it is a folder"));
  const std::string pipe = (folder.path() / "pipe").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(errorOf([&] { application->open(pipe); }), HasSubstr("no regular file"));
}

TEST(BadDeckTest, AHugeFileIsRefusedBeforeItsMemoryIsTaken) {
  const TemporaryFolder folder;
  const auto application = std::make_shared<Application>();
  const std::string deck = oneSlide().bytes();
  const std::string cut = folder.write("cut.pptx", deck.substr(0, deck.size() / 2));
  std::filesystem::resize_file(cut, 3'900'000'000);
  EXPECT_THAT(errorOf([&] { application->open(cut); }), HasSubstr("its end is missing"));
  const std::string whole = folder.write("whole.pptx", {});
  std::filesystem::resize_file(whole, 2'000'000'000);
  std::ofstream(whole, std::ios::app | std::ios::binary) << deck;
  EXPECT_THAT(errorOf([&] { application->open(whole); }), HasSubstr("more than the 1024 MB allowed"));
  std::filesystem::resize_file(whole, 0);
  std::filesystem::resize_file(whole, 70'000);
  EXPECT_THAT(errorOf([&] { application->open(whole); }), HasSubstr("it is no ZIP archive"));
}

}  // namespace
}  // namespace deck::test
