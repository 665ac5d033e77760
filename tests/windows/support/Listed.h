#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

namespace support {

/// Tests of which something is to be said.
struct Listed {
  /// "Suite.Test", or "Suite.*".
  std::string_view tests;
  std::string_view reason;
};

[[nodiscard]] inline bool isListed(const Listed& listed, const testing::TestInfo& test) {
  const std::string suite = std::string(test.test_suite_name()) + ".";
  return listed.tests == suite + "*" || listed.tests == suite + test.name();
}

[[nodiscard]] inline bool isListed(std::span<const Listed> list, const testing::TestInfo& test) {
  return std::ranges::any_of(list, [&](const Listed& each) { return isListed(each, test); });
}

/// False, with a word on the standard error, when the list names what is not there.
[[nodiscard]] inline bool areThere(std::span<const Listed> list) {
  const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
  const auto isThere = [&](const Listed& listed) {
    for (int i = 0; i < tests.total_test_suite_count(); ++i) {
      const testing::TestSuite& suite = *tests.GetTestSuite(i);
      for (int j = 0; j < suite.total_test_count(); ++j) {
        if (isListed(listed, *suite.GetTestInfo(j))) return true;
      }
    }
    (void)std::fprintf(stderr, "%s is listed, and not there\n", std::string(listed.tests).c_str());
    return false;
  };
  return std::ranges::all_of(list, isThere);
}

/// Takes them out of the run.
inline void leaveOut(std::span<const Listed> list) {
  std::string filter = testing::GTEST_FLAG(filter);
  filter += filter.find('-') == std::string::npos ? "-" : ":";
  for (const Listed& each : list) filter += std::string(each.tests) + ":";
  testing::GTEST_FLAG(filter) = filter;
}

/// Takes all others out of it.
inline void leaveIn(std::span<const Listed> list) {
  std::string filter;
  for (const Listed& each : list) filter += std::string(each.tests) + ":";
  testing::GTEST_FLAG(filter) = filter;
}

}  // namespace support
