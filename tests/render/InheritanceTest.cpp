// What placeholders take over from their layout and master, and what goes before it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/html/SlideRenderer.h"
#include "support/DeckBuilder.h"

namespace render {
namespace {

using deck::test::DeckBuilder;
using testing::HasSubstr;
using testing::Not;

const std::string Namespaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";
const std::string Red = "<a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill>";

std::string title(const std::string& properties, const std::string& behind = {}) {
  return "<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"T\"/><p:cNvSpPr/><p:nvPr><p:ph type=\"title\"/></p:nvPr>"
         "</p:nvSpPr><p:spPr>" +
         properties + "</p:spPr>" + behind +
         "<p:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:t>Words</a:t></a:r></a:p></p:txBody></p:sp>";
}

std::string style(const std::string& fill, const std::string& line, const std::string& effect) {
  const auto reference = [](const std::string& name, const std::string& index) {
    return "<a:" + name + " idx=\"" + index + "\"><a:srgbClr val=\"00AA00\"/></a:" + name + ">";
  };
  return "<p:style>" + reference("lnRef", line) + reference("fillRef", fill) +
         reference("effectRef", effect) + "</p:style>";
}

/// A deck whose master has this title and these text styles.
DeckBuilder deckWithMaster(const std::string& masterTitle, const std::string& textStyles = {}) {
  DeckBuilder builder;
  builder.part("ppt/slideMasters/slideMaster1.xml",
               "<p:sldMaster" + Namespaces + "><p:cSld><p:spTree>" + masterTitle +
                   "</p:spTree></p:cSld><p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\"/>" +
                   textStyles + "</p:sldMaster>");
  return builder;
}

std::string drawn(DeckBuilder& builder, const std::string& shape) {
  builder.addSlide(shape);
  const auto package = builder.package();
  return SlideRenderer(*package).shape(1, 2);
}

TEST(Inheritance, TheShapesOwnStyleGoesBeforeWhatItsPlaceholderInherits) {
  const std::string area = "<a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"952500\" cy=\"952500\"/></a:xfrm>";
  const std::string shadow =
      "<a:effectLst><a:outerShdw dist=\"9525\"><a:srgbClr val=\"0000FF\"/></a:outerShdw></a:effectLst>";
  const auto with = [&](const std::string& inherited, const std::string& own, const std::string& behind) {
    auto deck = deckWithMaster(title(area + inherited));
    return drawn(deck, title(own, behind));
  };
  // The builder's theme has plain fills and lines, and styles without effects.
  const auto filled = with("<a:noFill/><a:ln><a:noFill/></a:ln>" + shadow, "", style("1", "1", "1"));
  EXPECT_THAT(filled, HasSubstr("fill=\"#00aa00\""));
  EXPECT_THAT(filled, HasSubstr("stroke=\"#00aa00\""));
  EXPECT_THAT(filled, Not(HasSubstr("#0000ff")));
  // What it states itself goes before both; a style that names nothing leaves what is inherited.
  const auto stated = with("<a:noFill/>", Red + "<a:ln>" + Red + "</a:ln>", style("1", "1", "0"));
  EXPECT_THAT(stated, Not(HasSubstr("#00aa00")));
  EXPECT_THAT(with(Red + shadow, "", style("0", "0", "0")),
              AllOf(HasSubstr("#ff0000"), HasSubstr("#0000ff")));
}

TEST(Inheritance, TitlesHaveTheirMastersStyleAndOtherTextThePresentations) {
  const std::string italic =
      "<p:defaultTextStyle><a:lvl1pPr><a:defRPr i=\"1\"/></a:lvl1pPr></p:defaultTextStyle>";
  const std::string styles =
      "<p:txStyles><p:titleStyle><a:lvl1pPr><a:defRPr sz=\"4400\"/></a:lvl1pPr></p:titleStyle></p:txStyles>";
  const auto with = [&](const std::string& textStyles, const std::string& shape) {
    auto deck = deckWithMaster("", textStyles);
    deck.presentationExtra(italic);
    return drawn(deck, shape);
  };
  EXPECT_THAT(with(styles, title("")), Not(HasSubstr("italic")));
  EXPECT_THAT(with("", title("")), HasSubstr("italic"));
  EXPECT_THAT(with(styles, deck::test::textShape(2, "A", "plain")), HasSubstr("italic"));
}

}  // namespace
}  // namespace render
