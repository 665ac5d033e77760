#include "render/text/TextFit.h"

#include <gtest/gtest.h>

namespace render {
namespace {

/// Without fonts every Latin character is 0.55 of the size wide: 9.9 pt at the 18 pt that hold here.
TextBody body(const std::string& text) {
  TextBody made;
  made.properties.shrinks = true;
  auto& paragraph = made.paragraphs.emplace_back();
  paragraph.runs.push_back({Run::Kind::Text, text, {}});
  return made;
}

constexpr double Line = 18 * PxPerPoint * SingleLine;
constexpr double Letter = 18 * PxPerPoint * 0.55;

TEST(TextFit, LinesAreBrokenBetweenWordsAndIdeographs) {
  const struct {
    const char* text;
    double letters;  // of room
    int lines;
  } cases[] = {{"aaa bbb ccc", 11, 1}, {"aaa bbb ccc", 8, 2}, {"aaa bbb ccc", 3, 3}, {"", 5, 1},
               {"aaaaaaaaaa", 5, 2},   {"aaa-bbb", 5, 2},     {"a\tb", 50, 1},       {"漢字漢字漢字", 5, 3},
               {"aaa bbb  ", 7, 1}};
  for (const auto& [text, letters, lines] : cases) {
    const auto made = body(text);
    EXPECT_NEAR(TextExtent(made).height(letters * Letter + 0.01, made.properties), lines * Line, 0.01)
        << text;
  }
}

TEST(TextFit, TextShrinksUntilItIsInsideAndKeepsWhatTheFileStates) {
  std::string text;
  for (int i = 0; i < 60; ++i) text += "word ";
  for (const double stated : {1.0, 0.7}) {
    for (const double room : {4.0, 6.0, 9.0, 30.0}) {
      auto made = body(text);
      made.properties.fontScale = stated;
      fitText(made, 30 * Letter, room * Line, 0);
      EXPECT_LE(TextExtent(made).height(30 * Letter, made.properties), room * Line + 1e-6) << room;
      EXPECT_LE(made.properties.fontScale, stated);
      if (room == 30) {
        EXPECT_EQ(made.properties.fontScale, stated);
        EXPECT_EQ(made.properties.lineReduction, 0);
      } else if (stated == 1) {
        EXPECT_TRUE(made.properties.fontScale < 1 || made.properties.lineReduction > 0) << room;
      }
    }
  }
}

TEST(TextFit, SpacesBetweenParagraphsCountAndOverflowIsTolerated) {
  auto made = body("one");
  made.paragraphs.push_back(made.paragraphs.front());
  made.paragraphs[1].style.spaceBefore = Spacing{false, 10};
  EXPECT_NEAR(TextExtent(made).height(1000, made.properties), 2 * Line + 10, 0.01);
  fitText(made, 1000, (2 * Line + 10) / 1.05, 0.06);
  EXPECT_EQ(made.properties.lineReduction, 0);
  fitText(made, 1000, (2 * Line + 10) / 1.05, 0);
  EXPECT_GT(made.properties.lineReduction, 0);
}

}  // namespace
}  // namespace render
