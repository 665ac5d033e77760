#include <gtest/gtest.h>

#include "render/svg/HtmlOut.h"
#include "render/text/FontMetrics.h"
#include "render/text/Script.h"
#include "render/text/TextReader.h"

namespace render {
namespace {

TEST(TextRules, AutomaticNumbers) {
  const struct {
    const char* scheme;
    int number;
    const char* expected;
  } cases[] = {{"arabicPeriod", 12, "12."},
               {"arabicParenBoth", 3, "(3)"},
               {"arabicPlain", 7, "7"},
               {"alphaLcParenR", 1, "a)"},
               {"alphaUcPeriod", 28, "BB."},
               {"romanLcPeriod", 1994, "mcmxciv."},
               {"romanUcParenR", 4, "IV)"},
               {"circleNumDbPlain", 1, "①"},
               {"circleNumDbPlain", 20, "⑳"},
               {"circleNumDbPlain", 21, "21"},
               {"nobodyKnows", 5, "5"},
               {"circleNumWdBlackPlain", 10, "❿"},
               {"circleNumWdBlackPlain", 11, "⓫"},
               {"arabicDbPeriod", 10, "１０．"},
               {"ea1ChsPeriod", 12, "十二."},
               {"ea1JpnChsDbPeriod", 20, "二十．"},
               {"ea1ChtPlain", 105, "一百〇五"},
               {"ea1JpnKorPlain", 110, "一百一十"},
               {"hebrew2Minus", 15, "טו-"},
               {"hebrew2Minus", 116, "קטז-"},
               {"thaiNumParenR", 12, "๑๒)"},
               {"thaiAlphaPeriod", 43, "กก."},
               {"hindiNumPeriod", 3, "३."},
               {"hindiAlpha1Period", 2, "ख."},
               {"arabic2Minus", 3, "ج-"}};
  for (const auto& [scheme, number, expected] : cases)
    EXPECT_EQ(autoNumber(scheme, number), expected) << scheme;
}

TEST(TextRules, TextIsSplitByTheScriptsThatTypefacesAreFor) {
  const auto pieces = [](std::string_view text) {
    std::string joined;
    splitByScript(text, [&](std::string_view piece, Script script) {
      joined += script == Script::Latin ? "[L:" : script == Script::EastAsian ? "[E:" : "[C:";
      joined += std::string(piece) + "]";
    });
    return joined;
  };
  EXPECT_EQ(pieces("1. abc"), "[L:1. abc]");
  EXPECT_EQ(pieces("日本 12、abc 漢"), "[E:日本 12、][L:abc ][E:漢]");
  EXPECT_EQ(pieces("12 שלום, abc"), "[C:12 שלום, ][L:abc]");
  EXPECT_EQ(pieces("“漢”"), "[E:“漢”]");
  EXPECT_EQ(pieces("\xFF\xE6"), "[L:\xFF\xE6]");
  EXPECT_EQ(pieces(""), "");
}

TEST(TextRules, SymbolFontsBecomeCharactersOfEveryFont) {
  EXPECT_EQ(fromSymbolFont("Wingdings", "\u00FC"), "✔");
  EXPECT_EQ(fromSymbolFont("Wingdings", "\uF0A7"), "▪");
  EXPECT_EQ(fromSymbolFont("wingdings 3", "}"), "▸");
  EXPECT_EQ(fromSymbolFont("Wingdings", "\u0001z\xFF"), "\u0001⌘\uFFFD");
  EXPECT_EQ(fromSymbolFont("Symbol", "a1\u00B7"), "α1•");
  EXPECT_EQ(fromSymbolFont("Arial", "§"), "§");
}

TEST(TextRules, FontStacksNameSubstitutesAndCannotLeaveTheirAttribute) {
  EXPECT_EQ(fontStack("Calibri").css, "'Calibri','Carlito',sans-serif");
  EXPECT_EQ(fontStack("times new roman").css, "'times new roman','Liberation Serif','Tinos',serif");
  EXPECT_EQ(fontStack("Any Mono").css, "'Any Mono',monospace");
  EXPECT_EQ(fontStack("x';}\"><script>&\n").css, "'xscript',sans-serif");
}

TEST(TextRules, NumbersAreShortAndTextIsEscaped) {
  HtmlOut out;
  out << 1.0 << ' ' << 1.5 << ' ' << -0.25 << ' ' << 0.004 << ' ' << -0.004 << ' ' << 1e300 << ' '
      << 0.0 / 1.0;
  EXPECT_EQ(out.str(), "1 1.5 -0.25 0 0 1000000000 0");
  HtmlOut text;
  text.text(std::string("a<b>&\"'\x01\x1F\x7F\0é", 13));
  EXPECT_EQ(text.str(), "a&lt;b&gt;&amp;&quot;&#39;é");
  HtmlOut broken;
  broken.text("a\xFF\xED\xA0\x80\xE6\xBC<");
  EXPECT_EQ(broken.str(), "a\uFFFD\uFFFD\uFFFD&lt;");
}

}  // namespace
}  // namespace render
