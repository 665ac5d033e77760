// Where shapes stand on their slide.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "deck/objects/Shape.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"

namespace deck::test {
namespace {

using testing::ElementsAre;

/// Lengths in points.
std::string transform(const std::string& tag, const std::array<int, 4>& frame, const std::string& more = {}) {
  return "<" + tag + "><a:off x=\"" + std::to_string(frame[0]) + "pt\" y=\"" + std::to_string(frame[1]) +
         "pt\"/><a:ext cx=\"" + std::to_string(frame[2] * 12700) + "\" cy=\"" +
         std::to_string(frame[3] * 12700) + "\"/>" + more + "</" + tag + ">";
}

std::string shape(const std::string& xfrm, const std::string& nvPr = {}) {
  return support::plainShape(9, "a", xfrm, nvPr);
}

std::string group(const std::string& xfrm, const std::string& shapes) {
  return support::groupShape(8, "g", shapes, xfrm);
}

std::vector<double> frame(PowerPoint::Shape& shape) {
  return {shape.Left(), shape.Top(), shape.Width(), shape.Height()};
}

std::shared_ptr<PowerPoint::Shape> firstShape(const support::DeckBuilder& deck) {
  return deck.presentation()->Slides()->Item(1)->Shapes()->Item(1);
}

TEST(FrameTest, IsInPointsWhateverTheElementAndItsUnits) {
  const std::vector<std::string> cases{
      shape(transform("a:xfrm", {10, 20, 30, 40})),
      "<p:graphicFrame>" + transform("p:xfrm", {10, 20, 30, 40}) + "</p:graphicFrame>",
      "<p:pic><p:spPr>" + transform("a:xfrm", {10, 20, 30, 40}) + "</p:spPr></p:pic>",
      "<p:sp><p:spPr><a:xfrm rot=\"5400000\"><a:off x=\"127000\" y=\"254000\"/>"
      "<a:ext cx=\"381000\" cy=\"508000\"/></a:xfrm></p:spPr></p:sp>",
      group(transform("a:xfrm", {10, 20, 30, 40}), {}),
  };
  for (const std::string& xml : cases) {
    EXPECT_THAT(frame(*firstShape(support::DeckBuilder::of(xml))), ElementsAre(10, 20, 30, 40)) << xml;
  }
}

TEST(FrameTest, OfAPlaceholderComesFromItsOwnLayoutOrMaster) {
  support::DeckBuilder deck;
  const std::string body = "<p:ph type=\"body\" idx=\"7\"/>";
  const std::string title = "<p:ph type=\"title\"/>";
  deck.part("ppt/slideMasters/slideMaster1.xml", "<p:sldMaster><p:cSld><p:spTree>" +
                                                     shape(transform("a:xfrm", {1, 1, 1, 1}), title) +
                                                     "</p:spTree></p:cSld></p:sldMaster>");
  deck.layout("<p:spTree>" + shape({}, title) + shape(transform("a:xfrm", {2, 2, 2, 2}), body) +
              "</p:spTree>");
  deck.addSlide(shape({}, title) + shape({}, "<p:ph idx=\"7\"/>") +
                shape(transform("a:xfrm", {3, 3, 3, 3}), body) + shape({}, "<p:ph type=\"dt\"/>"));
  const auto shapes = deck.presentation()->Slides()->Item(1)->Shapes();
  EXPECT_THAT(frame(*shapes->Item(1)), ElementsAre(1, 1, 1, 1));
  EXPECT_THAT(frame(*shapes->Item(2)), ElementsAre(2, 2, 2, 2));
  EXPECT_THAT(frame(*shapes->Item(3)), ElementsAre(3, 3, 3, 3));
  EXPECT_THAT(frame(*shapes->Item(4)), ElementsAre(0, 0, 0, 0)) << "stated nowhere";
}

TEST(FrameTest, ItemsOfAGroupAreThoseOfInnerGroupsAndStandOnTheSlide) {
  // Children in coordinates of half the size, from (100, 100) on.
  const std::string halved = "<a:chOff x=\"1270000\" y=\"1270000\"/><a:chExt cx=\"635000\" cy=\"635000\"/>";
  const std::string inner = transform("a:xfrm", {110, 110, 10, 10},
                                      "<a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"127000\" cy=\"127000\"/>");
  const auto items =
      firstShape(support::DeckBuilder::of(group(transform("a:xfrm", {10, 20, 100, 100}, halved),
                                                shape(transform("a:xfrm", {100, 105, 20, 10})) +
                                                    group(inner, shape(transform("a:xfrm", {1, 2, 3, 4}))))))
          ->GroupItems();
  ASSERT_EQ(items->Count(), 2);
  EXPECT_THAT(frame(*items->Item(1)), ElementsAre(10, 30, 40, 20));
  EXPECT_THAT(frame(*items->Item(2)), ElementsAre(32, 44, 6, 8));
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(items->Item(3)); }),
              testing::HasSubstr("no shape 3 in a group on slide 1"));
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(items->Item(1)->GroupItems()); }),
              testing::HasSubstr("is no group"));
}

TEST(FrameTest, IsANumberHoweverGroupsAreScaled) {
  const std::string huge =
      "<a:xfrm><a:off x=\"1e12\" y=\"0\"/><a:ext cx=\"1e12\" cy=\"1e12\"/>"
      "<a:chOff x=\"-1e12\" y=\"0\"/><a:chExt cx=\"1e-12\" cy=\"1e-12\"/></a:xfrm>";
  std::string shapes = shape(transform("a:xfrm", {1, 1, 1, 1}));
  for (int i = 0; i < 40; ++i) shapes = group(huge, shapes);
  const auto items = firstShape(support::DeckBuilder::of(shapes))->GroupItems();
  for (const double value : frame(*items->Item(1))) EXPECT_TRUE(std::isfinite(value));
}

}  // namespace
}  // namespace deck::test
