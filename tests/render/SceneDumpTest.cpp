#include "render/scene/SceneDump.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace render {
namespace {

TEST(SceneDump, TextsStayOnTheirLineAndDoNothingToATerminal) {
  const std::pair<std::string_view, const char*> cases[] = {
      {"", R"("")"},
      {"a \"b\" \\", R"("a \"b\" \\")"},
      {"a\tb\nc\x1B[2J\x7F", R"("a\tb\x0ac\x1b[2J\x7f")"},
      {"\xC2\x9B"
       "2J café",
       R"("\x9b2J café")"},
      {"\xFF\xED\xA0\x80", "\"\uFFFD\uFFFD\""}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(inQuotes(text), expected);
  EXPECT_EQ(inQuotes(std::string(121, 'a')), "\"" + std::string(120, 'a') + "…\"");
}

TEST(SceneDump, NumbersAreShort) {
  const std::pair<double, const char*> cases[] = {{0.004, "0"},       {-0.004, "0"},
                                                  {1.005, "1"},       {66.666, "66.67"},
                                                  {-2.5, "-2.5"},     {1e300, "1000000000000"},
                                                  {std::nan(""), "-"}};
  for (const auto& [value, expected] : cases) EXPECT_EQ(number(value), expected);
}

TEST(SceneDump, EndsWhereItIsFull) {
  Box box;
  box.text.paragraphs.emplace_back().runs.assign(100, {Run::Kind::Text, std::string(500, 'a'), {}});
  SceneDump dump;
  for (int i = 0; i < 1000; ++i) dump.add(box);
  EXPECT_TRUE(dump.isFull());
  dump.problem("one more");
  const std::string text = dump.take();
  EXPECT_LT(text.size(), DumpLines::Most + 100);
  EXPECT_THAT(text, testing::EndsWith("\n(the rest is left out: the scene is too large)\n"));
}

}  // namespace
}  // namespace render
