// What a small deck may ask for and does not get.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Error.h"
#include "render/html/SlideRenderer.h"
#include "support/DeckBuilder.h"

namespace render {
namespace {

using support::DeckBuilder;
using support::textShape;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string repeated(std::size_t times, const std::string& text) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

const std::string Frame = "<a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"952500\" cy=\"952500\"/></a:xfrm>";

SlidePage drawn(DeckBuilder& builder) {
  const auto package = builder.package();
  return SlideRenderer(*package).slide(1);
}

TEST(Bounds, WhatEveryParagraphInheritsIsSmall) {
  const std::string longName(5000, 'n');
  const auto stops = repeated(5000, "<a:gs pos=\"1000\"><a:srgbClr val=\"123456\"/></a:gs>");
  DeckBuilder builder = DeckBuilder::of(
      support::plainShape(2, "A", Frame, {},
                          "<p:txBody><a:bodyPr/><a:lstStyle><a:lvl1pPr><a:buFont typeface=\"" + longName +
                              "\"/><a:buChar char=\"" + longName + "\"/><a:defRPr><a:gradFill><a:gsLst>" +
                              stops + "</a:gsLst></a:gradFill><a:latin typeface=\"" + longName +
                              "\"/></a:defRPr></a:lvl1pPr></a:lstStyle>" +
                              repeated(200, "<a:p><a:r><a:t>x</a:t></a:r></a:p>") + "</p:txBody>"));
  const auto page = drawn(builder);
  EXPECT_LT(page.html.size(), 2000000U);
  EXPECT_THAT(page.html, Not(HasSubstr(longName.substr(0, 300))));
  EXPECT_THAT(page.problems, IsEmpty());
}

TEST(Bounds, ShapesThatAPageHasNoRoomForKeepTheirEmptyElement) {
  // A heavy outline on the layout that every placeholder of the slide takes over.
  const std::string point = "<a:pt x=\"12345678\" y=\"12345678\"/>";
  const auto points = repeated(20000, "<a:cubicBezTo>" + point + point + point + "</a:cubicBezTo>");
  const std::string heavy = support::plainShape(
      2, "L",
      Frame + "<a:custGeom><a:pathLst><a:path><a:moveTo><a:pt x=\"l\" y=\"t\"/></a:moveTo>" + points +
          "</a:path></a:pathLst></a:custGeom><a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill>",
      "<p:ph idx=\"9\"/>");
  const auto takers = [](int count) {
    std::string all;
    for (int id = 2; id < 2 + count; ++id) {
      all += support::plainShape(id, "S", {}, "<p:ph idx=\"9\"/>",
                                 "<p:txBody><a:bodyPr/><a:p><a:r><a:t>x</a:t></a:r></a:p></p:txBody>");
    }
    return all;
  };
  DeckBuilder builder;
  builder.layout("<p:spTree>" + heavy + "</p:spTree>");
  builder.addSlide(takers(40) + textShape(300, "Last", "last"));
  const auto page = drawn(builder);
  EXPECT_LT(page.html.size(), 33U << 20U);
  EXPECT_THAT(page.problems, testing::ElementsAre(HasSubstr("would make the page too large")));
  EXPECT_THAT(page.html, HasSubstr("id=\"s1-sh300\""));
  EXPECT_TRUE(page.html.ends_with("</div></section>"));

  builder.shapes(1, support::groupShape(400, "G", takers(110)) + textShape(300, "Last", "last"));
  const auto group = drawn(builder);
  EXPECT_THAT(group.problems, testing::ElementsAre(HasSubstr("too many points")));
  EXPECT_THAT(group.html, HasSubstr("last"));
}

}  // namespace
}  // namespace render
