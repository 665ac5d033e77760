#include "app/wiring/LogLine.h"

#include <gtest/gtest.h>

#include "basic/Date.h"

namespace app::test {
namespace {

TEST(LogLine, KnowsItsTimeAndWhatIsForProgrammers) {
  struct Case {
    const char* line;
    const char* time;
    const char* text;
  };
  const Case cases[] = {
      {"11/22/2026 4:03:11 PM.500 It failed (twice). (-2147221489-LF2000)\r\n", "11/22/2026 4:03:11 PM",
       "It failed (twice)."},
      {"22.11.2026 16:03:11.070 'a (1).txt' is gone. (53-deck)", "22.11.2026 16:03:11",
       "'a (1).txt' is gone."},
      {"11/22/2026 4:03:11 PM.500 Event        OnConnection", "11/22/2026 4:03:11 PM",
       "Event        OnConnection"},
      {"'a.123 b' cannot be read. (-2147221497-LF2000)", "", "'a.123 b' cannot be read."},
      {"Retry (2-3 times)", "", "Retry (2-3 times)"},
      {"Retry (soon)", "", "Retry (soon)"},
      {"4.5 is no date", "", "4.5 is no date"},
      {"", "", ""},
  };
  for (const auto& [line, time, text] : cases) {
    const LogLine parts(line);
    EXPECT_EQ(parts.time, time) << line;
    EXPECT_EQ(parts.text, text) << line;
  }
  EXPECT_EQ(LogLine(cases[0].line).date(), basic::DateFrom(2026, 11, 22, 16, 3, 11));
  EXPECT_EQ(LogLine("9999999 x.500 y").date(), std::nullopt);
}

}  // namespace
}  // namespace app::test
