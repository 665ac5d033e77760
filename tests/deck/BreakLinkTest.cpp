// Shapes that are freed of the files they are linked to, and dates as fields.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "deck/objects/LinkedPictures.h"
#include "fakes/FakeServices.h"
#include "support/ChartDeck.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::errorOf;
using support::faultsOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A frame with a sheet that is linked; what it shows stands in `preview`.
std::string linkedSheet(int id, const std::string& link, const std::string& preview) {
  return support::graphicFrame(id, "Sheet " + std::to_string(id),
                               "http://schemas.openxmlformats.org/presentationml/2006/ole",
                               "<p:oleObj name=\"Worksheet\" r:id=\"" + link +
                                   "\" progId=\"Excel.Sheet.12\"><p:link/>" + preview + "</p:oleObj>");
}

/// The part that leads out of the package, "" for none.
std::string externalPart(opc::Package& package) {
  for (opc::Part* part : package.parts()) {
    if (std::ranges::any_of(part->relationships(), &opc::Relationship::external)) return part->name();
  }
  return {};
}

TEST(BreakLink, ObjectsAndPicturesKeepWhatTheyShow) {
  DeckBuilder builder;
  const int slide = builder.addSlide();
  builder.part("ppt/media/image1.emf", "drawing", "image/x-emf");
  const std::string image = builder.relate(slide, "image", "../media/image1.emf");
  const std::string sheet = builder.relate(slide, "oleObject", "file:///C:/data/book.xlsx!Sheet1", true);
  const std::string logo = builder.relate(slide, "image", "file:///C:/data/logo.png", true);
  const std::string preview =
      "<p:pic><p:nvPicPr><p:cNvPr id=\"0\" name=\"\"/><p:cNvPicPr/><p:nvPr/></p:nvPicPr>"
      "<p:blipFill><a:blip r:embed=\"" +
      image + "\"/></p:blipFill><p:spPr><a:xfrm/><a:prstGeom prst=\"rect\"/></p:spPr></p:pic>";
  builder.shapes(slide, linkedSheet(2, sheet, preview) + linkedSheet(3, sheet, "") +
                            support::pictureShape(
                                4, "Logo", "<a:blip r:embed=\"" + image + "\" r:link=\"" + logo + "\"/>") +
                            support::textShape(5, "Text", "x"));
  const auto deck = builder.presentation();
  const auto shapes = deck->Slides()->Item(1)->Shapes();
  shapes->Item(1)->Tags()->Add("MINE", "kept");
  const double width = shapes->Item(1)->Width();
  shapes->Item(1)->LinkFormat()->BreakLink();
  const auto sheet2 = shapes->Item(1);
  EXPECT_EQ(sheet2->Type(), PowerPoint::ShapeType::Picture);
  EXPECT_EQ(sheet2->Name() + " " + std::to_string(sheet2->Id()), "Sheet 2 2");
  EXPECT_DOUBLE_EQ(sheet2->Width(), width);
  EXPECT_EQ(sheet2->Tags()->Value(1) + sheet2->LinkFormat()->SourceFullName(), "kept");

  EXPECT_THAT(errorOf([&] { shapes->Item(2)->LinkFormat()->BreakLink(); }), HasSubstr("no picture of what"));
  EXPECT_EQ(shapes->Item(2)->Type(), PowerPoint::ShapeType::LinkedOLEObject);
  shapes->Item(3)->LinkFormat()->BreakLink();
  EXPECT_EQ(shapes->Item(3)->Type(), PowerPoint::ShapeType::Picture);
  EXPECT_THAT(errorOf([&] { shapes->Item(3)->LinkFormat()->BreakLink(); }), HasSubstr("is not linked"));
  const std::string xml(deck->slidePart(1).bytes());
  EXPECT_THAT(xml, Not(HasSubstr("r:link")));
  deck->tagStore().write();
  EXPECT_THAT(faultsOf(deck->package().serialize()), IsEmpty());
}

TEST(BreakLink, AShapeKeepsThePictureThatFillsIt) {
  const support::TemporaryFolder folder;
  const std::string file = folder.write("wall.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
  DeckBuilder builder;
  const int slide = builder.addSlide();
  const std::string wall = builder.relate(slide, "image", "file://" + file, true);
  builder.shapes(
      slide, support::plainShape(2, "Wall",
                                 "<a:blipFill><a:blip r:link=\"" + wall + "\"/><a:stretch/></a:blipFill>"));
  const auto deck = builder.presentation();
  deck->loadLinkedPictures();
  const auto shape = deck->Slides()->Item(1)->Shapes()->Item("Wall");
  EXPECT_EQ(shape->Type(), PowerPoint::ShapeType::AutoShape);
  EXPECT_EQ(shape->LinkFormat()->SourceFullName(), file);
  shape->LinkFormat()->BreakLink();
  EXPECT_THAT(deck->slidePart(1).bytes(), AllOf(HasSubstr("r:embed"), Not(HasSubstr("r:link"))));
  EXPECT_EQ(externalPart(deck->package()), "");
  EXPECT_THAT(faultsOf(deck->package().serialize()), IsEmpty());
}

TEST(TakePicturesIn, TakesWhatIsNoShapesAndLeavesWhatCannotBeRead) {
  const support::TemporaryFolder folder;
  fakes::Files files;
  host::Services services;
  services.files = &files;
  host::Use(services);
  const std::string wall = folder.write("wall.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
  DeckBuilder builder;
  const int slide = builder.addSlide();
  const auto linked = [&](const std::string& target) {
    return "<a:blip r:link=\"" + builder.relate(slide, "image", target, true) + "\"/>";
  };
  builder.part("ppt/media/image1.emf", "drawing", "image/x-emf");
  const std::string kept = "<a:blip r:embed=\"" + builder.relate(slide, "image", "../media/image1.emf") +
                           "\" r:link=\"" + builder.relate(slide, "image", "gone.emf", true) + "\"/>";
  const auto bullet = [](const std::string& blip) {
    return "<a:p><a:pPr><a:buBlip>" + blip + "</a:buBlip></a:pPr><a:r><a:t>x</a:t></a:r></a:p>";
  };
  builder.relate(slide, "image", "leftover.png", true);
  builder.shapes(slide, support::shapeWithParagraphs(
                            2, "Bullets",
                            bullet(linked("wall.svg")) + bullet(linked("file://" + wall)) + bullet(kept) +
                                bullet(linked("gone.png")) + bullet(linked("https://example.org/a.png"))) +
                            support::pictureShape(3, "Logo", linked("logo.png")));
  const auto deck = builder.presentation();
  std::vector<std::string> asked;
  const auto problems = takePicturesIn(*deck, (folder.path() / "deck.pptx").string(),
                                       [&](const std::string& path) { asked.push_back(path); });
  host::Use({});
  EXPECT_THAT(asked, testing::UnorderedElementsAre(wall, (folder.path() / "gone.png").string()));
  EXPECT_THAT(problems, testing::UnorderedElementsAre(HasSubstr("gone.png"), HasSubstr("is an address")));
  std::vector<std::string> left;
  for (const opc::Relationship& each : deck->slidePart(1).relationships()) {
    if (each.external) left.push_back(each.target);
  }
  EXPECT_THAT(left, testing::UnorderedElementsAre("gone.png", "https://example.org/a.png", "logo.png"));
  EXPECT_NE(deck->package().find("ppt/media/linked1.svg"), nullptr);
  EXPECT_EQ(deck->package().find("ppt/media/linked2.svg"), nullptr);
  EXPECT_THAT(faultsOf(deck->package().serialize()), IsEmpty());

  // Where nothing was read there is nothing to keep.
  const auto shapes = deck->Slides()->Item(1)->Shapes();
  EXPECT_THAT(errorOf([&] { shapes->Item(2)->LinkFormat()->BreakLink(); }), HasSubstr("could not be read"));
}

TEST(BreakLink, AChartKeepsItsValuesWithoutTheirFile) {
  support::ChartDeck chart;
  chart.relationship =
      "<Relationship Id=\"rId1\" "
      "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/oleObject\" "
      "Target=\"file:///C:/data/book.xlsx\" TargetMode=\"External\"/>";
  const auto deck = chart.build().presentation();
  const auto object = deck->Slides()->Item(1)->Shapes()->Item("Chart")->OLEFormat()->Object();
  ASSERT_TRUE(object->IsLinked());
  EXPECT_THAT(errorOf([&] { (void)object->Application()->DataSheet(); }), HasSubstr("another file"));
  object->BreakLink();
  EXPECT_FALSE(object->IsLinked());
  EXPECT_EQ(object->Application()->DataSheet()->Cells().rows(), 4U);
  EXPECT_EQ(externalPart(deck->package()), "");
}

TEST(InsertDateTime, AFieldKeepsTheLookOfTheText) {
  fakes::Loop loop;
  fakes::Clock clock{loop};
  host::Services services;
  services.clock = &clock;
  host::Use(services);
  DeckBuilder builder;
  builder.addSlide(support::shapeWithParagraphs(
      2, "Clock", "<a:p><a:r><a:rPr lang=\"en-US\" b=\"1\"/><a:t>old</a:t></a:r></a:p><a:p/>"));
  const auto deck = builder.presentation();
  const auto range = deck->Slides()->Item(1)->Shapes()->Item("Clock")->TextFrame()->TextRange();
  range->InsertDateTime(PowerPoint::DateTimeFormat::Hmmss, true);
  const std::string xml(deck->slidePart(1).bytes());
  EXPECT_THAT(xml, testing::ContainsRegex(
                       "<a:fld id=\"[^\"]+\" type=\"datetime11\"><a:rPr lang=\"en-US\" b=\"1\"/><a:t>[0-9]"));
  EXPECT_THAT(range->Text(), testing::MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]"));
  EXPECT_THAT(faultsOf(deck->package().serialize()), IsEmpty());
  host::Use({});
}

}  // namespace
}  // namespace deck::test
