// What does not run by way of automation, and why.

#include "windows/conformance/LeftOut.h"

#include "windows/support/Listed.h"

namespace conformance {
namespace {

using support::Listed;

/// They run, and ask nothing of the host.
constexpr Listed Silent[] = {
    {"ClockFields.*", "formats alone"},
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
    {"MisbehavingHost.ACallThatFailsInOneWayEndsNothingButItself", "is a part of the other"},
    {"LinkEditsTest.LinkingIsOneStepAndShowsTheValues", "undo entries of the object model bear no labels"},
    {"LinkEditsTest.ACopiedLinkGoesOntoWhatTakesIt", "undo entries of the object model bear no labels"},
    {"DrivenShapesTest.APictureThatAnEarlierShowHasLeftIsTakenBack",
     "adapters put those back at the end of each"},
    {"PresentationTest.ChartsAreRestoredBeforeASave",
     "counts calls of Restore, which the object model does not have: the adapter writes the cells"},
    {"OfflineTest.AChartWithItsDataElsewhereIsFreedOfThem",
     "has a linked chart: charts of Graph have a datasheet of their own"},
};

}  // namespace

bool leaveOut() {
  support::leaveOut(Different);
  return support::areThere(Different) && support::areThere(Silent);
}

bool asksNothing(const testing::TestInfo& test) { return support::isListed(Silent, test); }

}  // namespace conformance
