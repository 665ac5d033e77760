// What does not run by way of automation, and why.

#include "windows/conformance/LeftOut.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace conformance {
namespace {

struct Listed {
  /// "Suite.Test", or "Suite.*".
  std::string_view tests;
  std::string_view reason;
};

/// They run, and ask nothing of the host.
constexpr Listed Silent[] = {
    {"ColumnLettersTest.*", "letters and numbers alone"},
    {"ConnectionTest.AClosedConnectionAnswersNothing", "nothing is opened"},
    {"ConnectionTest.ALockedFileIsTriedThreeTimesAndOnceMore", "nothing is opened"},
    {"ConnectionTest.TagStringsRoundTrip", "nothing is opened"},
    {"ExcelTest.WithoutExcelNothingOpens", "there is no program to call"},
    {"ManyLinksTest.*", "acts on slides and shapes that it makes itself"},
    {"ModelTest.*", "acts on slides and shapes that it makes itself"},
    {"OfflinePages.*", "times and rows alone"},
    {"PresentationTest.ConnectionNumbersFollowTheLargest", "connections alone"},
    {"RelinkTest.*", "acts on what it makes itself"},
    {"ScheduleTest.*", "times alone"},
    {"ScrollIndexesTest.*", "numbers alone"},
    {"SendingTest.*", "acts on a presentation that it makes itself"},
    {"SupportTest.*", "logs, settings, paths: services of the machine"},
};

/// They do not run.
constexpr Listed Different[] = {
    {"LinkEditsTest.LinkingIsOneStepAndShowsTheValues", "undo entries of the object model bear no labels"},
    {"LinkEditsTest.ACopiedLinkGoesOntoWhatTakesIt", "undo entries of the object model bear no labels"},
    {"CommandsTest.LinksAreCopiedPastedMovedAndTakenAway", "undo entries of the object model bear no labels"},
    {"TablesTest.WhileADeckIsEditedCellsFollowTheDisplayAndTheAuthorsAreSaved",
     "counts calls of Restore, which the object model does not have: the adapter writes the texts"},
    {"DrivenShapesTest.APictureWhoseValueIsGoneShowsItsOwnInAShow",
     "begins with a picture that an earlier show has left: adapters put those back at its end"},
    {"PresentationTest.ChartsTakeAllRowsWhileValuesAreOnDisplay",
     "looks for texts in a datasheet, where they become numbers"},
    {"OfflineTest.HoldsTheValuesAndNothingOfWhereTheyCameFrom",
     "has a linked chart: charts of Graph have a datasheet of their own"},
};

bool isListed(const Listed& listed, const testing::TestInfo& test) {
  const std::string suite = std::string(test.test_suite_name()) + ".";
  return listed.tests == suite + "*" || listed.tests == suite + test.name();
}

bool isThere(const Listed& listed) {
  const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
  for (int i = 0; i < tests.total_test_suite_count(); ++i) {
    const testing::TestSuite& suite = *tests.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      if (isListed(listed, *suite.GetTestInfo(j))) return true;
    }
  }
  (void)std::fprintf(stderr, "LeftOut.cpp names %s, which is not there\n", std::string(listed.tests).c_str());
  return false;
}

}  // namespace

bool leaveOut() {
  std::string filter = testing::GTEST_FLAG(filter);
  filter += filter.find('-') == std::string::npos ? "-" : ":";
  for (const Listed& each : Different) filter += std::string(each.tests) + ":";
  testing::GTEST_FLAG(filter) = filter;
  return std::ranges::all_of(Different, isThere) && std::ranges::all_of(Silent, isThere);
}

bool asksNothing(const testing::TestInfo& test) {
  return std::ranges::any_of(Silent, [&](const Listed& each) { return isListed(each, test); });
}

}  // namespace conformance
