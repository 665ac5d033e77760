// What is measured and bent with a machine's fonts, on a machine that has one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "SquareFont.h"
#include "render/html/WordArt.h"
#include "render/text/FontMetrics.h"
#include "support/TemporaryFolder.h"

namespace render {
namespace {

/// Fontconfig reads its settings once, when the first font is asked for.
class OneFont final : public testing::Environment {
 public:
  void SetUp() override {
    static_cast<void>(folder_.write("square.ttf", test::squareFont()));
    const std::string folder = folder_.path().string();
    const std::string settings =
        folder_.write("fonts.conf", "<fontconfig><dir>" + folder + "</dir><cachedir>" + folder +
                                        "/cache</cachedir></fontconfig>");
    setenv("FONTCONFIG_FILE", settings.c_str(), 1);
  }

 private:
  support::TemporaryFolder folder_;
};

[[maybe_unused]] const auto* const fonts = testing::AddGlobalTestEnvironment(new OneFont);

TEST(FontMetrics, AreThoseOfTheFontThatTextIsDrawnWith) {
  const FontStack& own = fontStack("Square");
  EXPECT_EQ(own.family, "Square");
  EXPECT_EQ(own.css, "'Square',sans-serif");
  EXPECT_DOUBLE_EQ(own.metrics.ascent, 0.8);
  EXPECT_DOUBLE_EQ(own.metrics.descent, 0.2);
  // What stands in for a typeface that is not here is named, so that browsers draw what was measured.
  EXPECT_EQ(fontStack("Arial").css, "'Arial','Liberation Sans','Arimo','Square',sans-serif");
  EXPECT_EQ(fontStack("Arial").family, "Square");
  // Characters that the font lacks are as wide as usual.
  EXPECT_NEAR(textWidth({"Square"}, "AxA漢"), 1 + 0.55 + 1 + 1, 1e-6);
}

TEST(FontMetrics, OutlinesAreCutIntoShortLines) {
  const auto polygons = textOutline({"Square"}, "xBA");
  ASSERT_EQ(polygons.size(), 2U);
  // A curve and the straight line that closes it.
  const auto& arch = polygons[0];
  ASSERT_EQ(arch.size(), 1U + 8 + 8);
  EXPECT_NEAR(arch[4].x, 0.55 + 0.5, 1e-6);
  EXPECT_NEAR(arch[4].y, -0.5, 1e-6);
  EXPECT_NEAR(polygons[1][0].x, 0.55 + 1, 1e-6);
}

TextBody bent(const char* warp, std::initializer_list<const char*> lines) {
  TextBody body;
  body.properties.warp = warp;
  for (const char* line : lines) {
    auto& paragraph = body.paragraphs.emplace_back();
    paragraph.style.align = Align::Center;
    paragraph.runs.push_back({Run::Kind::Text, line, {}});
    paragraph.runs.back().style.latin = "Square";
  }
  return body;
}

/// The polygons of text in an area of 100 by 100, without what stands around their points.
std::vector<std::vector<Point>> drawn(const TextBody& body) {
  HtmlOut out;
  EXPECT_TRUE(writeWordArt(out, body, {0, 0, 100, 100}, 0));
  std::vector<std::vector<Point>> polygons;
  const std::string& html = out.str();
  for (auto at = html.find(" d=\"M"); at != std::string::npos; at = html.find(" d=\"M", at + 1)) {
    std::string numbers = html.substr(at + 5, html.find('Z', at) - at - 5);
    std::replace(numbers.begin(), numbers.end(), 'L', ' ');
    std::istringstream in(numbers);
    auto& polygon = polygons.emplace_back();
    for (Point p; in >> p.x >> p.y;) polygon.push_back(p);
  }
  return polygons;
}

struct Form {
  const char* warp;
  /// Along the upper edge: left, middle, right; along the lower one likewise.
  Point edge[6];
};

// By the warps' paths and their default adjust values (ECMA-376, presetTextWarpDefinitions).
constexpr Form Forms[] = {
    {"textPlain", {{0, 0}, {50, 0}, {100, 0}, {0, 100}, {50, 100}, {100, 100}}},
    {"textSlantUp", {{0, 55.56}, {50, 27.78}, {100, 0}, {0, 100}, {50, 72.22}, {100, 44.44}}},
    {"textSlantDown", {{0, 0}, {50, 22.22}, {100, 44.44}, {0, 55.56}, {50, 77.78}, {100, 100}}},
    {"textTriangle", {{0, 50}, {50, 0}, {100, 50}, {0, 100}, {50, 100}, {100, 100}}},
    {"textChevron", {{0, 25}, {50, 0}, {100, 25}, {0, 100}, {50, 75}, {100, 100}}},
    {"textCascadeUp", {{0, 55.56}, {50, 27.78}, {100, 0}, {0, 100}, {50, 88.89}, {100, 77.78}}},
    {"textFadeRight", {{0, 0}, {50, 16.67}, {100, 33.33}, {0, 100}, {50, 83.33}, {100, 66.67}}},
    {"textFadeUp", {{33.33, 0}, {50, 0}, {66.67, 0}, {0, 100}, {50, 100}, {100, 100}}},
    {"textInflateBottom", {{0, 0}, {50, 0}, {100, 0}, {0, 68.75}, {50, 100}, {100, 68.75}}},
    {"textCanUp", {{0, 14.29}, {50, 0}, {100, 14.29}, {0, 100}, {50, 85.71}, {100, 100}}},
};

TEST(WordArt, FillsTheFormOfItsWarp) {
  for (const Form& form : Forms) {
    SCOPED_TRACE(form.warp);
    const auto polygons = drawn(bent(form.warp, {"A"}));
    ASSERT_EQ(polygons.size(), 1U);
    // From the lower left up, to the right, down and back, each side in eight pieces.
    static constexpr std::size_t places[] = {8, 12, 16, 0, 28, 24};
    ASSERT_EQ(polygons[0].size(), 33U);
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_NEAR(polygons[0][places[i]].x, form.edge[i].x, 0.015) << i;
      EXPECT_NEAR(polygons[0][places[i]].y, form.edge[i].y, 0.015) << i;
    }
  }
}

TEST(WordArt, LinesStandBelowEachOtherAndToTheirSide) {
  const auto polygons = drawn(bent("textPlain", {"AA", "A"}));
  ASSERT_EQ(polygons.size(), 2U);
  // The ink is an em, and 1.2 to the next baseline, high; the second line half as wide.
  EXPECT_NEAR(polygons[1][8].x, 25, 0.01);
  EXPECT_NEAR(polygons[1][8].y, 100 * 1.2 / 2.2, 0.01);
  EXPECT_NEAR(polygons[1][24].x, 75, 0.01);
  EXPECT_NEAR(polygons[1][24].y, 100, 0.01);
}

TEST(WordArt, FollowsAnArcInItsOwnSize) {
  // 24 px in the middle of the upper half of a circle, whose half is 157 px long.
  const auto polygons = drawn(bent("textArchUp", {"A"}));
  const double angle = std::acos(-1.0) / 2 - 12 / 50.0;
  EXPECT_NEAR(polygons[0][0].x, 50 - 50 * std::cos(angle), 0.01);
  EXPECT_NEAR(polygons[0][0].y, 50 - 50 * std::sin(angle), 0.01);
  EXPECT_NEAR(polygons[0][8].x, 50 - 74 * std::cos(angle), 0.01);
  EXPECT_NEAR(polygons[0][8].y, 50 - 74 * std::sin(angle), 0.01);
}

TEST(WordArt, IsLeftToTheBrowserWithoutOutlines) {
  HtmlOut out;
  EXPECT_FALSE(writeWordArt(out, bent("textWave1", {"xyz"}), {0, 0, 100, 100}, 0));
  EXPECT_FALSE(writeWordArt(out, bent("", {"A"}), {0, 0, 100, 100}, 0));
  EXPECT_EQ(out.size(), 0U);
}

}  // namespace
}  // namespace render
