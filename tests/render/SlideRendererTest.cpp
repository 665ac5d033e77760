#include "render/html/SlideRenderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Strings.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/TableShape.h"

namespace render {
namespace {

using support::DeckBuilder;
using support::errorOf;
using support::textShape;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string Png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\x06\0\0\0", 29);

std::string picture(int id, const std::string& relationship) {
  return "<p:pic><p:nvPicPr><p:cNvPr id=\"" + std::to_string(id) +
         "\" name=\"P\"/><p:cNvPicPr/><p:nvPr/></p:nvPicPr><p:blipFill><a:blip r:embed=\"" + relationship +
         "\"/><a:srcRect l=\"25000\" "
         "r=\"25000\"/><a:stretch><a:fillRect/></a:stretch></p:blipFill><p:spPr><a:xfrm>"
         "<a:off x=\"0\" y=\"0\"/><a:ext cx=\"952500\" cy=\"952500\"/></a:xfrm></p:spPr></p:pic>";
}

/// Fails unless it is there.
std::string replaced(const std::string& text, const std::string& old, const std::string& with) {
  EXPECT_THAT(text, HasSubstr(old));
  return basic::Replace(text, old, with);
}

TEST(SlideRenderer, AShapeMayHaveAnyNumberOf32Bits) {
  const auto package = DeckBuilder::of(replaced(textShape(2, "A", "first"), "id=\"2\"", "id=\"2147483648\"") +
                                       replaced(textShape(2, "B", "second"), "id=\"2\"", "id=\"4294967295\""))
                           .package();
  SlideRenderer renderer(
      *package, {.assetPrefix = "", .isLive = [](int, std::uint32_t shape) { return shape == 4294967295U; }});
  EXPECT_THAT(renderer.shape(1, 2147483648U), HasSubstr("class=\"s\" id=\"s1-sh2147483648\""));
  EXPECT_THAT(renderer.shape(1, 4294967295U), HasSubstr("class=\"s live\" id=\"s1-sh4294967295\""));
}

TEST(SlideRenderer, AShapeAloneIsTheSameAsInItsSlide) {
  const auto package = DeckBuilder::of(textShape(2, "A", "first") + textShape(3, "B", "second")).package();
  SlideRenderer renderer(*package);
  const auto page = renderer.slide(1).html;
  for (const std::uint32_t id : {2U, 3U}) EXPECT_THAT(page, HasSubstr(renderer.shape(1, id)));

  auto& part = package->part("ppt/slides/slide1.xml");
  part.xml().select_node("(//a:t)[2]").node().text().set("<3rd>");
  part.markChanged();
  EXPECT_THAT(renderer.shape(1, 3), HasSubstr("&lt;3rd&gt;"));
  EXPECT_THAT(renderer.slide(1).html, HasSubstr("&lt;3rd&gt;"));
}

TEST(SlideRenderer, ACellAloneIsTheSameAsInItsTable) {
  const auto cell = [](const std::string& text, const std::string& attributes = {}) {
    return "<a:tc" + attributes + "><a:txBody><a:bodyPr/><a:p><a:r><a:t>" + text +
           "</a:t></a:r></a:p></a:txBody><a:tcPr/></a:tc>";
  };
  DeckBuilder builder;
  builder.addSlide(textShape(2, "A", "no table") +
                   support::tableShape(3, "T", 2,
                                       "<a:tr h=\"9\">" + cell("wide", " gridSpan=\"2\"") +
                                           cell("covered", " hMerge=\"1\"") + "</a:tr><a:tr h=\"9\">" +
                                           cell("one") + cell("two") + "</a:tr>"));
  const auto package = builder.package();
  SlideRenderer renderer(*package);
  const auto cells = renderer.cells(1, 3, {{1, 2}, {2, 1}, {2, 2}, {7, 7}});
  ASSERT_EQ(cells.size(), 2U) << "a covered cell is not drawn";
  EXPECT_EQ(cells[0].index, 1U);
  EXPECT_THAT(cells[0].html, HasSubstr("one"));
  EXPECT_THAT(renderer.shape(1, 3), HasSubstr(cells[0].html + cells[1].html + "</tr>"));
  EXPECT_TRUE(renderer.cells(1, 2, {{1, 1}}).empty());
}

TEST(SlideRenderer, TheSlideIsReadAnewEachTime) {
  DeckBuilder builder = DeckBuilder::of();
  builder.layout(
      "<p:bg><p:bgPr><a:solidFill><a:srgbClr val=\"00FF00\"/></a:solidFill></p:bgPr></p:bg><p:spTree>" +
      textShape(2, "A", "on the layout") + "</p:spTree>");
  const auto package = builder.package();
  SlideRenderer renderer(*package);
  const auto before = renderer.slide(1).html;
  EXPECT_THAT(before, AllOf(HasSubstr("#00ff00"), HasSubstr("on the layout")));

  auto& part = package->part("ppt/slides/slide1.xml");
  auto root = part.xml().document_element();
  root.append_attribute("showMasterSp") = "0";
  auto fill = root.child("p:cSld").prepend_child("p:bg").append_child("p:bgPr").append_child("a:solidFill");
  fill.append_child("a:srgbClr").append_attribute("val") = "0000FF";
  part.markChanged();
  const auto after = renderer.slide(1).html;
  EXPECT_THAT(after, AllOf(HasSubstr("#0000ff"), Not(HasSubstr("#00ff00")), Not(HasSubstr("on the layout"))));
}

TEST(SlideRenderer, HiddenAndUndrawableShapesKeepTheirElement) {
  const auto hidden = replaced(textShape(2, "A", "secret"), "name=", "hidden=\"1\" name=");
  const auto package =
      DeckBuilder::of(hidden + textShape(2, "B", "same id") + picture(9, "rIdNone")).package();
  SlideRenderer renderer(*package);
  const auto html = renderer.slide(1).html;
  EXPECT_THAT(html, AllOf(HasSubstr("id=\"s1-sh2\" hidden></div>"), Not(HasSubstr("secret")),
                          HasSubstr("id=\"s1-sh2-2\""), HasSubstr("id=\"s1-sh9\"")));
  EXPECT_EQ(renderer.shape(1, 2), "<div class=\"s\" id=\"s1-sh2\" hidden></div>");
}

TEST(SlideRenderer, PicturesAreServedByNamesThatTellNothing) {
  DeckBuilder builder = DeckBuilder::of();
  builder.addSlide();
  builder.part("ppt/media/secret-name.png", Png);
  builder.part("ppt/media/unused.png", Png + "x");
  builder.part("ppt/media/drawing.emf", "EMF");
  const auto image = builder.relate(1, "image", "../media/secret-name.png");
  const auto metafile = builder.relate(1, "image", "../media/drawing.emf");
  builder.shapes(1, picture(2, image) + picture(3, image) + picture(4, metafile));
  const auto package = builder.package();
  SlideRenderer renderer(*package, {.assetPrefix = "/x/", .isLive = {}});
  const auto page = renderer.slide(1);
  ASSERT_EQ(page.assets.size(), 1U);
  const auto& name = page.assets[0];
  EXPECT_THAT(name, testing::MatchesRegex("[0-9a-f]{16}\\.png"));
  EXPECT_EQ(*renderer.assets().bytes(name), Png);
  EXPECT_EQ(renderer.assets().find(name)->contentType, "image/png");
  EXPECT_EQ(renderer.assets().find("secret-name.png"), nullptr);
  EXPECT_THAT(page.html, Not(HasSubstr("secret")));
  // The middle half of the picture fills the shape.
  EXPECT_THAT(page.html, HasSubstr("<image href=\"/x/" + name +
                                   "\" decoding=\"sync\" x=\"-50\" y=\"0\" width=\"200\" height=\"100\""));
  EXPECT_TRUE(renderer.slide(2).assets.empty());
}

TEST(SlideRenderer, NotesTheTypefacesThatTextIsSetIn) {
  const auto package =
      DeckBuilder::of(
          support::shapeWithParagraphs(
              2, "A",
              "<a:p><a:r><a:rPr><a:latin typeface=\"Nobody Has This\"/><a:ea typeface=\"Nor "
              "This\"/></a:rPr><a:t>one"
              "</a:t></a:r><a:r><a:rPr><a:latin typeface=\"Wingdings\"/></a:rPr><a:t>x</a:t></a:r></a:p>"
              "<a:p><a:r><a:rPr><a:latin typeface=\"Nobody Has This\"/></a:rPr><a:t>two</a:t></a:r></a:p>"
              "<a:p><a:endParaRPr><a:latin typeface=\"Of An Empty Line\"/></a:endParaRPr></a:p>"))
          .package();
  const auto page = SlideRenderer(*package).slide(1);
  ASSERT_EQ(page.fonts.size(), 1U);
  EXPECT_EQ(page.fonts[0].typeface, "Nobody Has This");
  EXPECT_NE(page.fonts[0].family, "Nobody Has This");
}

TEST(SlideRenderer, GroupsMayBeNestedDeeply) {
  std::string shape = textShape(2, "A", "deep inside");
  for (int id = 3; id < 203; ++id) shape = support::groupShape(id, "G", shape);
  const auto package = DeckBuilder::of(shape).package();
  EXPECT_THAT(SlideRenderer(*package).slide(1).html, HasSubstr("deep inside"));
}

TEST(SlideRenderer, TextOfALiveShapeNeverSticksOut) {
  // A line of 38.4 px in a room of 37: as written it may stick out a little, live it may not.
  std::string shape = textShape(2, "A", "one two");
  shape = replaced(shape, "<a:bodyPr/>", "<a:bodyPr><a:normAutofit/></a:bodyPr>");
  shape = replaced(shape, "cy=\"400000\"", "cy=\"443865\"");
  const auto package = DeckBuilder::of(shape).package();
  EXPECT_THAT(SlideRenderer(*package).shape(1, 2), HasSubstr("line-height:1.2;"));
  SlideRenderer live(*package, {.assetPrefix = "", .isLive = [](int, std::uint32_t) { return true; }});
  EXPECT_THAT(live.shape(1, 2), HasSubstr("line-height:1.08;"));
}

TEST(SlideRenderer, ErrorsNameTheSlideAndTheShape) {
  const auto package = DeckBuilder::of().package();
  SlideRenderer renderer(*package);
  EXPECT_EQ(errorOf([&] { renderer.slide(7); }), "There is no slide 7 in test.pptx; it has 1.");
  EXPECT_EQ(errorOf([&] { renderer.shape(1, 42); }), "Slide 1 of test.pptx has no shape with the id 42.");
}

TEST(SlideRenderer, ADamagedPartCostsOnlyTheShapeThatNeedsIt) {
  DeckBuilder builder = DeckBuilder::of();
  builder.part("ppt/diagrams/data1.xml", "<not xml");
  const auto id = builder.relate(1, "diagramData", "../diagrams/data1.xml");
  builder.shapes(
      1,
      textShape(2, "A", "still here") +
          "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"3\" name=\"D\"/></p:nvGraphicFramePr><a:graphic>"
          "<a:graphicData><d:relIds xmlns:d=\"d\" r:dm=\"" +
          id + "\"/></a:graphicData></a:graphic></p:graphicFrame>");
  const auto package = builder.package();
  SlideRenderer renderer(*package);
  const auto page = renderer.slide(1);
  EXPECT_THAT(page.html, HasSubstr("still here"));
  ASSERT_EQ(page.problems.size(), 1U);
  EXPECT_THAT(page.problems[0], HasSubstr("Shape 3 of slide 1 is not drawn: "));
}

}  // namespace
}  // namespace render
