// Pictures that shapes show for the time being, and links to files.

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "basic/Error.h"
#include "pictures/PictureFile.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"
#include "support/RecordedChanges.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::faultsOf;
using support::pictureShape;
using support::TemporaryFolder;
using testing::HasSubstr;
using testing::IsEmpty;

std::string big32(std::uint32_t value) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(value >> shift & 0xFFU);
  return text;
}

/// As much of a PNG as tells its size; `mark` tells one from another.
std::string png(const std::string& mark = "", std::uint32_t width = 4, std::uint32_t height = 3) {
  const auto chunk = [](const std::string& type, const std::string& data) {
    return big32(static_cast<std::uint32_t>(data.size())) + type + data + "crc.";
  };
  return "\x89PNG\r\n\x1a\n" + chunk("IHDR", big32(width) + big32(height) + "12345") + chunk("IDAT", mark) +
         chunk("IEND", "");
}

const std::string Svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"><script>alert(1)</script></svg>";
const std::string Jpeg("\xFF\xD8\xFF\xC0\0\x0B\x08\0\x03\0\x04\x01\x01\x11\0\xFF\xDA\0\x02x\xFF\xD9", 23);

struct PicturesTest : testing::Test {
  TemporaryFolder folder;
  std::shared_ptr<Application> application = std::make_shared<Application>();

  [[nodiscard]] std::string at(const std::string& name) const { return (folder.path() / name).string(); }
  void put(const std::string& name, const std::string& bytes) const {
    static_cast<void>(folder.write(name, bytes));
  }
  /// A deck of one slide with a picture of its own.
  std::shared_ptr<Presentation> deckWithPicture() {
    DeckBuilder builder;
    const int slide = builder.addSlide();
    builder.part("ppt/media/image1.png", png("own"), "image/png");
    const std::string own = builder.relate(slide, "image", "../media/image1.png");
    builder.shapes(
        slide, pictureShape(2, "Photo", "<a:blip r:embed=\"" + own + "\"><a:lum bright=\"5000\"/></a:blip>"));
    put("deck.pptx", builder.bytes());
    return application->open(at("deck.pptx"));
  }
  static void show(Presentation& deck, const std::string& shape, const std::string& path) {
    const auto link = deck.Slides()->Item(1)->Shapes()->Item(shape)->LinkFormat();
    link->SourceFullName(path);
    link->Update();
  }
  /// The part that a shape's picture comes from.
  static std::string shownBytes(Presentation& deck, std::size_t shape = 0) {
    const pugi::xml_node blip = pictureOf(deck.shapesOf(1).all()[shape]);
    opc::Part* part = deck.slidePart(1).target(blip.attribute("r:embed").value());
    return part == nullptr ? "" : std::string(part->bytes());
  }
  static std::size_t mediaParts(Presentation& deck) {
    std::size_t count = 0;
    for (const opc::Part* part : deck.package().parts())
      count += part->name().starts_with("ppt/media/") ? 1U : 0U;
    return count;
  }
};

TEST_F(PicturesTest, AYearOfPicturesLeavesOnePartAndTheFileAsItWas) {
  const auto deck = deckWithPicture();
  support::RecordedChanges changes;
  deck->addListener(changes);
  for (int i = 0; i < 200; ++i) {
    put("a.png", i % 10 == 9 ? Jpeg : png(std::to_string(i)));
    show(*deck, "Photo", at("a.png"));
  }
  EXPECT_EQ(shownBytes(*deck), Jpeg);
  EXPECT_EQ(mediaParts(*deck), 2U);
  EXPECT_EQ(deck->slidePart(1).relationships().size(), 3U);
  show(*deck, "Photo", at("a.png"));
  EXPECT_EQ(changes.shapes.size(), 200U);

  // A copy holds what is on display, under its true kind.
  deck->SaveCopyAs(at("copy.pptx"));
  EXPECT_THAT(faultsOf(folder.read("copy.pptx")), IsEmpty());
  EXPECT_EQ(opc::Package::open(at("copy.pptx"))->part("ppt/media/live1.jpg").contentType(), "image/jpeg");
  deck->Save();
  const std::string saved = folder.read("deck.pptx");
  EXPECT_THAT(faultsOf(saved), IsEmpty());
  EXPECT_EQ(opc::Package::open(at("deck.pptx"))->find("ppt/media/live1.jpg"), nullptr);
  EXPECT_EQ(shownBytes(*deck), Jpeg);
  show(*deck, "Photo", "");
  EXPECT_EQ(shownBytes(*deck), png("own"));
  deck->Save();
  EXPECT_EQ(folder.read("deck.pptx"), saved);
  deck->removeListener(changes);
}

TEST_F(PicturesTest, ADrawingStandsBesideThePictureForReadersWithoutDrawings) {
  const auto deck = deckWithPicture();
  put("a.svg", Svg);
  show(*deck, "Photo", at("a.svg"));
  const pugi::xml_node blip = pictureOf(deck->shapesOf(1).all()[0]);
  const pugi::xml_node drawing = blip.child("a:extLst").child("a:ext").child("asvg:svgBlip");
  EXPECT_EQ(deck->slidePart(1).target(drawing.attribute("r:embed").value())->bytes(), Svg);
  EXPECT_EQ(shownBytes(*deck), png("own"));
  // In a copy the own picture would be a wrong one.
  deck->SaveCopyAs(at("copy.pptx"));
  EXPECT_EQ(shownBytes(*application->open(at("copy.pptx"))), Svg);
  EXPECT_EQ(shownBytes(*deck), png("own"));
  put("a.png", png("next"));
  show(*deck, "Photo", at("a.png"));
  EXPECT_EQ(shownBytes(*deck), png("next"));
  EXPECT_FALSE(pictureOf(deck->shapesOf(1).all()[0]).child("a:extLst").child("a:ext"));
}

TEST_F(PicturesTest, WhatCannotBeShownLeavesThePictureStanding) {
  const auto deck = deckWithPicture();
  const std::pair<std::string, const char*> cases[] = {
      {"", "holds no picture"},
      {"root:x:0:0:root:/root:/bin/bash\n", "holds no picture"},
      {png().substr(0, 50), "not written to its end"},
      {Jpeg.substr(0, 20), "not written to its end"},
      {"GIF89a and no end", "not written to its end"},
      {"<svg xmlns='http://www.w3.org/2000/svg'><g></svg>", "not written to its end"},
      {png("", 20'000, 20'000), "20000 x 20000 pixels"},
  };
  for (const auto& [bytes, reason] : cases) {
    put("bad.png", bytes);
    EXPECT_THAT(support::errorOf([&] { show(*deck, "Photo", at("bad.png")); }),
                testing::AllOf(HasSubstr(reason), HasSubstr("bad.png")));
    EXPECT_EQ(shownBytes(*deck), png("own"));
  }
  std::filesystem::resize_file(at("bad.png"), pictures::MaximumPictureBytes + 1);
  EXPECT_THROW(show(*deck, "Photo", at("bad.png")), basic::Error);
  EXPECT_THROW(show(*deck, "Photo", at("none.png")), basic::Error);
}

TEST_F(PicturesTest, LinkedPicturesFollowTheirFileAndStayLinks) {
  DeckBuilder builder = DeckBuilder::of();
  const auto blip = [](const std::string& id) { return "<a:blip r:link=\"" + id + "\"/>"; };
  const std::string link = builder.relate(1, "image", "logo.png", true);
  const std::string broken = builder.relate(1, "image", "none.png", true);
  const std::string web = builder.relate(1, "image", "http://203.0.113.1/x.png", true);
  builder.shapes(1, pictureShape(2, "Logo", blip(link)) + pictureShape(3, "Web", blip(web)) +
                        pictureShape(4, "Broken", blip(broken)));
  put("deck.pptx", builder.bytes());
  put("logo.png", png("first"));
  // They are read when their guard lets them.
  std::string asked;
  application->guardLinks([&](const std::string& path) {
    if (asked.empty()) asked = path;
    throw basic::Error(basic::AdapterError, "", "not now");
  });
  const auto deck = application->open(at("deck.pptx"));
  EXPECT_EQ(asked, at("logo.png"));
  EXPECT_EQ(mediaParts(*deck), 0U);
  EXPECT_EQ(deck->missingPictures(), std::vector<std::string>({at("logo.png"), at("none.png")}));
  application->guardLinks({});
  deck->loadLinkedPictures();
  EXPECT_EQ(deck->missingPictures(), std::vector<std::string>({at("none.png")}));
  EXPECT_EQ(shownBytes(*deck), png("first"));
  EXPECT_TRUE(deck->Saved());
  put("logo.png", png("second"));
  EXPECT_THROW(deck->UpdateLinks(), basic::Error);  // says that none.png is missing
  EXPECT_EQ(shownBytes(*deck), png("second"));

  // Data come before the link; without them it is the link's turn again.
  put("data.png", png("data"));
  show(*deck, "Logo", at("data.png"));
  EXPECT_THROW(deck->UpdateLinks(), basic::Error);
  EXPECT_EQ(shownBytes(*deck), png("data"));
  deck->SaveCopyAs(at("copy.pptx"));
  EXPECT_THAT(faultsOf(folder.read("copy.pptx")), IsEmpty());
  const auto slideIn = [&](const char* file) {
    return std::string(opc::Package::open(at(file))->part("ppt/slides/slide1.xml").bytes());
  };
  EXPECT_THAT(slideIn("copy.pptx"), testing::Not(HasSubstr("r:link=\"" + link)));
  deck->Save();
  EXPECT_THAT(faultsOf(folder.read("deck.pptx")), IsEmpty());
  EXPECT_THAT(slideIn("deck.pptx"), HasSubstr("r:link=\"" + link));
  EXPECT_EQ(mediaParts(*deck), 1U);
  show(*deck, "Logo", "");
  EXPECT_EQ(shownBytes(*deck), png("second"));
}

}  // namespace
}  // namespace deck::test
