#include "render/geometry/Geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <set>
#include <sstream>

#include "render/geometry/PresetTable.h"
#include "render/geometry/XmlValues.h"

namespace render {
namespace {

constexpr double W = 200 * EmuPerPx;
constexpr double H = 100 * EmuPerPx;

std::string firstPath(const char* preset, const Adjusts& adjusts = {}) {
  std::ostringstream out;
  const auto outline = Geometry::preset(preset)->evaluate(W, H, adjusts);
  for (const auto& command : outline.paths[0].commands) {
    out << command.op;
    for (int i = 0; i < operands(command.op); ++i)
      out << (i > 0 ? " " : "") << std::round(command.v[i] * 10) / 10 + 0.0;
  }
  return out.str();
}

TEST(Geometry, FormulasGiveThePointsOfTheStandard) {
  EXPECT_EQ(firstPath("rect"), "M0 0L200 0L200 100L0 100Z");
  EXPECT_EQ(firstPath("triangle", {{"adj", 25000}}), "M0 100L50 0L200 100Z");
  // A sixth of the shorter side, and never more than half of it.
  EXPECT_EQ(
      firstPath("roundRect"),
      "M0 16.7A16.7 16.7 0 0 1 16.7 0L183.3 0A16.7 16.7 0 0 1 200 16.7L200 83.3A16.7 16.7 0 0 1 183.3 100"
      "L16.7 100A16.7 16.7 0 0 1 0 83.3Z");
  EXPECT_EQ(firstPath("roundRect", {{"adj", 90000}}).substr(0, 23), "M0 50A50 50 0 0 1 50 0L");
  EXPECT_EQ(firstPath("rightArrow"), "M0 25L150 25L150 0L200 50L150 100L150 75L0 75Z");
  EXPECT_EQ(firstPath("chevron", {{"adj", 20000}}), "M0 0L180 0L200 50L180 100L0 100L20 50Z");
  // Angles are of rays, so a quarter of a flat ellipse still ends on its axis.
  EXPECT_EQ(firstPath("pie", {{"adj1", 0}, {"adj2", 5400000}}), "M200 50A100 50 0 0 1 100 100L100 50Z");
  // A path with a size of its own is stretched, its arcs and their ends with it.
  const auto cloud = Geometry::preset("cloud")->evaluate(W, H, {}).paths[0].commands;
  EXPECT_NEAR(cloud[0].v[0], cloud[cloud.size() - 2].v[5], 0.5);
  EXPECT_NEAR(cloud[0].v[1], cloud[cloud.size() - 2].v[6], 0.5);
  EXPECT_EQ(Geometry::preset("noSuchShape"), nullptr);
}

TEST(Geometry, TextLiesInsideTheShape) {
  const auto text = Geometry::preset("ellipse")->evaluate(W, H, {}).text;
  EXPECT_NEAR(text.x, 100 - 100 / std::sqrt(2), 0.01);
  EXPECT_NEAR(text.y + text.h, 50 + 50 / std::sqrt(2), 0.01);
}

/// Every name a preset uses is a built-in guide or defined by it: a slip in the
/// table would otherwise quietly count as zero.
TEST(Geometry, ThePresetTableIsConsistent) {
  const std::set<std::string> builtin = {
      "l",     "t",   "r",   "b",    "w",    "h",    "hc",   "vc",   "ss",   "ls",   "wd2",
      "wd3",   "wd4", "wd5", "wd6",  "wd8",  "wd10", "wd12", "wd32", "hd2",  "hd3",  "hd4",
      "hd5",   "hd6", "hd8", "hd10", "hd12", "hd32", "ssd2", "ssd4", "ssd6", "ssd8", "ssd16",
      "ssd32", "cd2", "cd4", "cd8",  "3cd4", "3cd8", "5cd8", "7cd8"};
  for (std::size_t i = 0; i < PresetTableSize; ++i) {
    const auto& preset = PresetTable[i];
    if (i > 0) {
      EXPECT_LT(std::strcmp(PresetTable[i - 1].name, preset.name), 0) << preset.name;
    }
    auto known = builtin;
    const auto use = [&](const std::string& name) {
      EXPECT_TRUE(known.contains(name) || parseNumber(name)) << preset.name << " uses " << name;
    };
    for (const std::string list : {preset.adjusts, preset.guides}) {
      std::istringstream entries(list);
      for (std::string entry; std::getline(entries, entry, ';');) {
        std::istringstream words(entry);
        std::string name;
        std::string op;
        std::string operand;
        words >> name >> op;
        if (list == preset.guides) {
          while (words >> operand) use(operand);
        }
        known.insert(name);
      }
    }
    std::istringstream paths(std::string(preset.textRect) + " " + preset.paths);
    for (std::string word; paths >> word;) {
      if (word.find_first_of("=|") == std::string::npos && !std::strchr("MLAQCZ", word[0])) use(word);
    }
  }
}

TEST(Geometry, EveryPresetGivesNumbersAtEverySize) {
  const std::pair<double, double> sizes[] = {{W, H}, {H, W}, {W, 0}, {0, H}, {0, 0}, {1e12, 1}};
  for (std::size_t i = 0; i < PresetTableSize; ++i) {
    for (const auto& [w, h] : sizes) {
      const auto outline =
          Geometry::preset(PresetTable[i].name)->evaluate(w, h, {{"adj", 1e9}, {"adj1", -1e9}});
      ASSERT_FALSE(outline.paths.empty()) << PresetTable[i].name;
      for (const auto& path : outline.paths) {
        for (const auto& command : path.commands) {
          for (const double v : command.v) EXPECT_TRUE(std::isfinite(v)) << PresetTable[i].name;
        }
      }
    }
  }
}

}  // namespace
}  // namespace render
