#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "deck/objects/LinkedObjects.h"
#include "deck/objects/Links.h"
#include "deck/objects/Slide.h"
#include "deck/objects/SlideShowSettings.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/RecordedChanges.h"

namespace deck::test {
namespace {

using PowerPoint::ShapeType;
using support::alternative;
using support::DeckBuilder;
using support::errorOf;
using support::graphicFrame;
using support::groupShape;
using support::pictureShape;
using support::plainShape;
using support::textShape;
using support::ZipEntry;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string Ole = "http://schemas.openxmlformats.org/presentationml/2006/ole";

TEST(ShapesTest, EveryKindHasItsTypeAndOnlyShapesWithTextAFrame) {
  struct Case {
    std::string xml;
    ShapeType type;
    bool hasText = false;
  };
  const std::string schemas = "http://schemas.openxmlformats.org/drawingml/2006/";
  const std::vector<Case> cases{
      {plainShape(9, "a", "<a:prstGeom prst=\"ellipse\"/>"), ShapeType::AutoShape, true},
      {textShape(9, "a", "x"), ShapeType::TextBox, true},
      {plainShape(9, "a", "", "<p:ph type=\"title\"/>"), ShapeType::Placeholder, true},
      {plainShape(9, "a", "<a:custGeom/>"), ShapeType::Freeform, true},
      {plainShape(9, "a", "<a:prstGeom prst=\"line\"/>"), ShapeType::Line, true},
      {"<p:cxnSp><p:nvCxnSpPr><p:cNvPr id=\"2\" name=\"a\"/></p:nvCxnSpPr><p:spPr>"
       "<a:prstGeom prst=\"line\"/></p:spPr></p:cxnSp>",
       ShapeType::Line},
      {groupShape(2, "a", textShape(3, "inner", "x")), ShapeType::Group},
      {pictureShape(2, "a", "<a:blip r:embed=\"rId1\"/>"), ShapeType::Picture},
      {pictureShape(2, "a", "<a:blip r:link=\"rId1\"/>"), ShapeType::LinkedPicture},
      {pictureShape(2, "a", "<a:blip r:embed=\"rId1\"/>", "<a:videoFile r:link=\"rId1\"/>"),
       ShapeType::Media},
      {graphicFrame(2, "a", schemas + "table", "<a:tbl/>"), ShapeType::Table},
      {graphicFrame(2, "a", schemas + "chart"), ShapeType::Chart},
      {alternative(graphicFrame(2, "a", "http://schemas.microsoft.com/office/drawing/2014/chartex"),
                   pictureShape(2, "a", "")),
       ShapeType::Chart},
      {graphicFrame(2, "a", schemas + "diagram"), ShapeType::Diagram},
      {graphicFrame(2, "a", Ole, "<p:oleObj progId=\"X\" r:id=\"rId1\"><p:embed/></p:oleObj>"),
       ShapeType::EmbeddedOLEObject},
      {graphicFrame(2, "a", Ole,
                    alternative("<p:oleObj progId=\"X\" r:id=\"rId1\"><p:link/></p:oleObj>", "<p:oleObj/>")),
       ShapeType::LinkedOLEObject},
  };
  DeckBuilder deck;
  for (const Case& c : cases) deck.addSlide(c.xml);
  const auto presentation = deck.presentation();
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(cases[i].xml);
    const auto shapes = presentation->Slides()->Item(static_cast<std::int32_t>(i + 1))->Shapes();
    ASSERT_EQ(shapes->Count(), 1);
    const auto shape = shapes->Item("A");
    EXPECT_EQ(shape->Type(), cases[i].type);
    EXPECT_EQ(shape->HasTextFrame(), cases[i].hasText);
  }
}

TEST(ShapesTest, TheFirstOfANameIsFoundInAnyCase) {
  DeckBuilder deck = DeckBuilder::of(textShape(2, "Price", "one") + textShape(3, "PRICE", "two") +
                                     textShape(4, "", "three"));
  const auto shapes = deck.presentation()->Slides()->Item(1)->Shapes();
  EXPECT_EQ(shapes->Item("price")->TextFrame()->TextRange()->Text(), "one");
  EXPECT_EQ(shapes->Item(2)->Name(), "PRICE");
}

TEST(ShapesTest, ErrorsNameSlideAndShape) {
  DeckBuilder deck = DeckBuilder::of();
  deck.addSlide(pictureShape(2, "Photo", "<a:blip r:embed=\"rId1\"/>"));
  const auto presentation = deck.presentation();
  const auto shapes = presentation->Slides()->Item(2)->Shapes();
  EXPECT_THAT(errorOf([&] { static_cast<void>(shapes->Item("Foto")); }),
              HasSubstr("no shape 'Foto' on slide 2"));
  for (const std::int32_t index : {0, 2, -1}) {
    EXPECT_THAT(errorOf([&] { static_cast<void>(shapes->Item(index)); }), HasSubstr("on slide 2"));
  }
  for (const std::int32_t index : {0, 3, -1}) {
    EXPECT_THAT(errorOf([&] { static_cast<void>(presentation->Slides()->Item(index)); }),
                HasSubstr("There is no slide " + std::to_string(index)));
  }
  const auto photo = shapes->Item(1);
  EXPECT_THAT(errorOf([&] { static_cast<void>(photo->TextFrame()); }), HasSubstr("'Photo' on slide 2"));
  EXPECT_THAT(errorOf([&] { static_cast<void>(photo->OLEFormat()); }), HasSubstr("'Photo' on slide 2"));
}

TEST(LinksTest, TargetsBecomePathsOfTheirSystem) {
  const std::pair<const char*, const char*> cases[] = {
      {"file:///C:\\Data\\Book%201.xlsx!Sheet1!R1C1:R2C2", "C:\\Data\\Book 1.xlsx!Sheet1!R1C1:R2C2"},
      {"file:///C:/Data/a.png", "C:\\Data\\a.png"},
      {"file:///\\\\server\\share\\a.png", "\\\\server\\share\\a.png"},
      {"file://server/share/a.png", "\\\\server\\share\\a.png"},
      {"FILE:///data/two%20words.png", "/data/two words.png"},
      {"file:///data/100%.png", "/data/100%.png"},
      {"a.png", "/decks/a.png"},
      {"pictures/a%20b.png", "/decks/pictures/a b.png"},
      {"C:\\Data\\a.png", "C:\\Data\\a.png"},
      {"/data/a.png", "/data/a.png"},
      {"https://example.com/a%20b.png", "https://example.com/a%20b.png"},
  };
  for (const auto& [target, path] : cases) EXPECT_EQ(sourcePath(target, "/decks/test.pptx"), path) << target;
  EXPECT_EQ(sourcePath("a.png", "C:\\decks\\test.pptx"), "C:\\decks\\a.png");
}

TEST(LinksTest, PicturesAndObjectsTellTheirSource) {
  DeckBuilder deck = DeckBuilder::of();
  const std::string book =
      deck.relate(1, "oleObject", "file:///C:\\Data\\my%20Book.xlsx!Sheet1!R2C1:R5C3", true);
  const std::string photo = deck.relate(1, "image", "file:///data/photo.png", true);
  deck.part("ppt/media/film.mp4", "film");
  const std::string film = deck.relate(1, "video", "../media/film.mp4");
  deck.shapes(1,
              graphicFrame(2, "Book", Ole,
                           "<p:oleObj progId=\"Excel.Sheet.12\" r:id=\"" + book + "\"><p:link/></p:oleObj>") +
                  pictureShape(3, "Photo", "<a:blip r:link=\"" + photo + "\"/>") +
                  pictureShape(4, "Film", "", "<a:videoFile r:link=\"" + film + "\"/>"));
  const auto presentation = deck.presentation();
  const auto shapes = presentation->Slides()->Item(1)->Shapes();
  EXPECT_EQ(shapes->Item("Book")->LinkFormat()->SourceFullName(), "C:\\Data\\my Book.xlsx!Sheet1!R2C1:R5C3");
  EXPECT_EQ(shapes->Item("Book")->OLEFormat()->ProgID(), "Excel.Sheet.12");
  const auto objects = linkedObjects(*presentation, 1);
  ASSERT_EQ(objects.size(), 1U);
  EXPECT_EQ(std::to_string(objects[0].shapeId) + " " + objects[0].progId, "2 Excel.Sheet.12");
  EXPECT_EQ(objects[0].file + " " + objects[0].item, "C:\\Data\\my Book.xlsx Sheet1!R2C1:R5C3");
  EXPECT_EQ(shapes->Item("Photo")->LinkFormat()->SourceFullName(), "/data/photo.png");
  EXPECT_THAT(errorOf([&] { static_cast<void>(shapes->Item("Film")->LinkFormat()); }),
              HasSubstr("not linked to a file"));
}

TEST(SlidesTest, StandInTheOrderOfTheList) {
  DeckBuilder deck;
  deck.addSlide(textShape(2, "a", "first part"));
  deck.addSlide(textShape(2, "a", "second part"));
  std::string presentation;
  for (const ZipEntry& entry : deck.entries()) {
    if (entry.name == "ppt/presentation.xml") presentation = entry.content;
  }
  const std::size_t one = presentation.find("rId101");
  presentation.replace(presentation.find("rId102"), 6, "rId101").replace(one, 6, "rId102");
  deck.part("ppt/presentation.xml", presentation);
  const auto slides = deck.presentation()->Slides();
  EXPECT_EQ(slides->Count(), 2);
  EXPECT_EQ(slides->Item(1)->Shapes()->Item(1)->TextFrame()->TextRange()->Text(), "second part");
  EXPECT_EQ(slides->Item(2)->SlideIndex(), 2);
}

TEST(SlidesTest, AreHiddenAndShownAgain) {
  DeckBuilder deck;
  deck.addSlide();
  deck.addSlide();
  deck.slideAttributes(2, "show=\"false\"");
  const auto presentation = deck.presentation();
  support::RecordedChanges listener;
  presentation->addListener(listener);
  const auto hidden = [&](std::int32_t slide) {
    return presentation->Slides()->Item(slide)->SlideShowTransition();
  };
  EXPECT_FALSE(hidden(1)->Hidden());
  EXPECT_TRUE(hidden(2)->Hidden());
  hidden(1)->Hidden(false);
  hidden(2)->Hidden(true);
  EXPECT_TRUE(presentation->Saved());
  hidden(1)->Hidden(true);
  hidden(2)->Hidden(false);
  EXPECT_FALSE(presentation->Saved());
  EXPECT_THAT(listener.hidden, ElementsAre(1, 2));
  EXPECT_THAT(std::string(presentation->slidePart(1).bytes()), HasSubstr(" show=\"0\""));
  EXPECT_EQ(std::string(presentation->slidePart(2).bytes()).find("show="), std::string::npos);
  presentation->UpdateLinks();
  EXPECT_EQ(listener.links, 1);
}

TEST(SettingsTest, AreWhatTheAuthorSetUp) {
  using enum PowerPoint::SlideShowType;
  struct Case {
    std::string properties;
    PowerPoint::SlideShowType type;
    bool loops;
    std::vector<std::int32_t> slides;
  };
  const std::vector<std::int32_t> all{1, 2, 3};
  const std::vector<Case> cases{
      {"", Speaker, false, all},
      {"<p:showPr loop=\"1\" useTimings=\"0\"><p:present/><p:sldAll/></p:showPr>", Speaker, true, all},
      {"<p:showPr><p:browse/><p:sldRg st=\"2\" end=\"3\"/></p:showPr>", Window, false, {2, 3}},
      {"<p:showPr><p:kiosk restart=\"300000\"/><p:sldRg st=\"0\" end=\"99\"/></p:showPr>", Kiosk, true, all},
      {"<p:showPr><p:present/><p:custShow id=\"4\"/></p:showPr>", Speaker, false, {3, 1, 3}},
      {"<p:showPr><p:present/><p:custShow id=\"5\"/></p:showPr>", Speaker, false, all},
      {"<p:showPr><p:present/><p:sldRg st=\"9\" end=\"12\"/></p:showPr>", Speaker, false, all},
      {"<p:showPr><p:sldRg st=\"2\" end=\"-2147483648\"/></p:showPr>", Speaker, false, all},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.properties);
    DeckBuilder deck;
    for (int i = 0; i < 3; ++i) deck.addSlide();
    deck.presentationProperties(c.properties);
    deck.customShow(4, {3, 1, 3}, "<p:sld r:id=\"rIdGone\"/>");
    const auto presentation = deck.presentation();
    const SlideShowSettings settings(*presentation);
    EXPECT_EQ(settings.ShowType(), c.type);
    EXPECT_EQ(settings.loops(), c.loops);
    EXPECT_EQ(settings.usesTimings(), c.properties.find("useTimings=\"0\"") == std::string::npos);
    EXPECT_EQ(settings.slides(), c.slides);
  }
}

}  // namespace
}  // namespace deck::test
