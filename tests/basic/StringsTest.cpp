#include "basic/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Markup.h"
#include "basic/Utf8.h"

namespace basic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What IsValidUtf8 means, computed from the value of the code point.
bool isOneCodePoint(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  std::size_t length = 1;
  if (lead >= 0x80) length = lead >= 0xF8 || lead < 0xC0 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (length != bytes.size()) return false;
  char32_t value = length == 1 ? lead : lead & (0x7FU >> length);
  for (const char c : bytes.substr(1)) {
    if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80) return false;
    value = value << 6U | (static_cast<unsigned char>(c) & 0x3FU);
  }
  constexpr char32_t Shortest[] = {0, 0, 0x80, 0x800, 0x10000};
  return value >= Shortest[length] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

TEST(Utf8Test, AcceptsWellFormedSequencesAlone) {
  constexpr unsigned char Ends[] = {0x41, 0x7F, 0x80, 0xBF, 0xC0, 0xFF};
  std::string bytes(4, '\0');
  for (int lead = 0x80; lead < 0x100; ++lead) {
    bytes[0] = static_cast<char>(lead);
    ASSERT_FALSE(IsValidUtf8(std::string_view(bytes).substr(0, 1)));
    for (int second = 0x70; second < 0x100; ++second) {
      bytes[1] = static_cast<char>(second);
      const auto two = std::string_view(bytes).substr(0, 2);
      ASSERT_EQ(IsValidUtf8(two), isOneCodePoint(two)) << lead << ' ' << second;
      for (const unsigned char third : Ends) {
        bytes[2] = static_cast<char>(third);
        const auto three = std::string_view(bytes).substr(0, 3);
        const bool endsInAscii = third < 0x80 && isOneCodePoint(two);
        ASSERT_EQ(IsValidUtf8(three), isOneCodePoint(three) || endsInAscii)
            << lead << ' ' << second << ' ' << third;
        for (const unsigned char fourth : Ends) {
          bytes[3] = static_cast<char>(fourth);
          const bool fourWell = isOneCodePoint(bytes) || (fourth < 0x80 && IsValidUtf8(three));
          ASSERT_EQ(IsValidUtf8(bytes), fourWell) << lead << ' ' << second << ' ' << third << ' ' << fourth;
        }
      }
    }
  }
}

TEST(Utf8Test, ReadsWhatItWrites) {
  for (char32_t c = 0; c <= 0x110000; c += c < 0x11000 ? 1 : 0xFF) {
    std::string text;
    AppendUtf8(text, c);
    ASSERT_TRUE(IsValidUtf8(text)) << std::uint32_t{c};
    std::size_t at = 0;
    ASSERT_EQ(DecodeUtf8(text, at), IsCharacter(c) ? c : ReplacementCharacter);
    ASSERT_EQ(at, text.size());
  }
}

TEST(Utf8Test, PutsOneReplacementInPlaceOfASequenceThatIsNoCharacter) {
  // A lone tail, a cut sequence, half of a surrogate pair, an overlong solidus (its first byte never is one),
  // a number that is too large.
  const std::pair<std::string_view, std::size_t> cases[] = {
      {"\xBF", 1}, {"\xE2\x82", 1}, {"\xED\xA0\x80", 1}, {"\xC0\xAF", 2}, {"\xF4\x90\x80\x80", 1}};
  for (const auto& [bad, replacements] : cases) {
    const std::string text = "a" + std::string(bad) + "z";
    std::u32string read;
    for (std::size_t at = 0; at < text.size();) read += DecodeUtf8(text, at);
    EXPECT_EQ(read, U"a" + std::u32string(replacements, ReplacementCharacter) + U"z");
    std::size_t at = 1;
    DecodeUtf8(std::string_view(text).substr(0, text.size() - 1), at);
    EXPECT_LE(at, text.size() - 1);
  }
}

TEST(Utf8Test, FindsAFaultAnywhereInALongText) {
  for (std::size_t size = 0; size < 100; ++size) {
    std::string text(size, 'x');
    ASSERT_TRUE(IsValidUtf8(text));
    for (std::size_t at = 0; at < size; ++at) {
      text[at] = '\xBF';
      ASSERT_FALSE(IsValidUtf8(text)) << size << ' ' << at;
      text[at] = 'x';
    }
    ASSERT_TRUE(IsValidUtf8(text + "ä€😀" + text));
    ASSERT_FALSE(IsValidUtf8(text + "\xF0\x9F\x98"));
  }
}

TEST(Utf8Test, DoesNotReadBeyondASequenceThatIsCutOff) {
  for (const std::string_view cut : {"\xC3", "\xE2", "\xE2\x82", "\xF0\x9F", "\xF0\x9F\x98"}) {
    // A block of exactly this size, for the address sanitizer to guard.
    const std::vector<char> block(cut.begin(), cut.end());
    EXPECT_FALSE(IsValidUtf8({block.data(), block.size()}));
  }
}

TEST(MarkupTest, HoldsAnyTextInContentsAndAttributes) {
  EXPECT_EQ(Escaped("<a href='x'>\"Tom & Jérôme\""),
            "&lt;a href=&#39;x&#39;&gt;&quot;Tom &amp; Jérôme&quot;");
  EXPECT_EQ(Escaped("a\tb\nc\r\nd\re\x01\x7F"), "a\tb\nc\nd\ne");
}

TEST(StringsTest, CountsCodePoints) {
  EXPECT_EQ(Len("aä€😀"), 4U);
  EXPECT_EQ(Len(""), 0U);
  const char* const lefts[] = {"", "a", "aä", "aä€", "aä€😀", "aä€😀"};
  for (std::size_t i = 0; i < std::size(lefts); ++i) EXPECT_EQ(Left("aä€😀", i), lefts[i]);
}

TEST(StringsTest, ChangesTheCaseOfAsciiAlone) {
  EXPECT_EQ(UCase("az@[`{ä"), "AZ@[`{ä");
  EXPECT_TRUE(EqualsIgnoreCase("Tag ä", "TAG ä"));
  EXPECT_FALSE(EqualsIgnoreCase("ä", "Ä"));
  EXPECT_FALSE(EqualsIgnoreCase("@", "`"));
  EXPECT_FALSE(EqualsIgnoreCase("tag", "tags"));
  EXPECT_TRUE(StartsWith("TAGS", "TAG"));
  EXPECT_FALSE(StartsWith("tags", "TAG"));
  EXPECT_FALSE(StartsWith("TA", "TAG"));
}

TEST(StringsTest, TrimsSplitsAndReplaces) {
  EXPECT_EQ(Trim("  a b\t "), "a b\t") << "blanks alone";
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("\u00A0a"), "\u00A0a");
  EXPECT_THAT(Split("", ';'), IsEmpty());
  EXPECT_THAT(Split("a", ';'), ElementsAre("a"));
  EXPECT_THAT(Split(";a;;b;", ';'), ElementsAre("", "a", "", "b", ""));
  EXPECT_EQ(Replace("aaa", "aa", "b"), "ba") << "from the left";
  EXPECT_EQ(Replace("abab", "ab", "abab"), "abababab");
  EXPECT_EQ(Replace("abc", "", "x"), "abc");
  EXPECT_EQ(Replace("abc", "b", ""), "ac");
}

}  // namespace
}  // namespace basic
