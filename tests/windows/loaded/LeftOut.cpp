// What does not run through the module, and why.

#include "windows/loaded/LeftOut.h"

#include "windows/support/Listed.h"

namespace loaded {
namespace {

using support::Listed;

/// They call classes of the system, which the module does not hand out: no host could.
constexpr Listed Inside[] = {
    {"BackgroundTest.*", "drives a presentation of the system's own"},
    {"ColumnLettersTest.*", "letters and numbers alone"},
    {"ConnectionTest.*", "drives a connection of the system's own"},
    {"DatabaseTest.*", "drives a connection of the system's own"},
    {"DeliveredTest.*", "has files and settings of its own"},
    {"ExcelTest.*", "drives a connection of the system's own"},
    {"LinkEditsTest.*", "calls the edits of links"},
    {"ManyLinksTest.*", "calls the edits of links"},
    {"ModelTest.*", "drives links of the system's own"},
    {"OfflinePages.*", "times and rows alone"},
    {"ClockFields.*", "formats alone"},
    {"PresentationTest.*", "drives a presentation of the system's own"},
    {"RelinkTest.*", "calls the edits of links"},
    {"SampleDataTest.*", "calls the edits of connections"},
    {"ScheduleTest.*", "times alone"},
    {"ScrollIndexesTest.*", "numbers alone"},
    {"SendingTest.*", "calls for the sending, which authors ask for by a dialog"},
    {"SupportTest.*", "logs, settings, paths: services of the machine"},
};

/// They look into the system while it runs, or set what only the system sets.
constexpr Listed LookInside[] = {
    {"AddInTest.WhatOffLineGenerationOpensIsLeftAlone", "says that a copy is being made"},
    {"CommandsTest.ADisplayTypeThatThereIsNotPressesNothing", "asks for a type that no command offers"},
    {"CommandsTest.AreEnabledByWhatIsConnected", "takes connections away"},
    {"CommandsTest.EachClickOpensItsPageAndWritesItsLine", "puts pages of its own in place of dialogs"},
    {"CommandsTest.OpenDialogsAndDockThePageThatFitsWhereThereIsRoom", "looks at forms"},
    {"CommandsTest.WhatIsClickedTooLateSaysWhyItIsOfNoUse", "takes the pages away"},
    {"DrivenShapesTest.BrokenScrollEntriesLeaveTheShowRunning", "looks at timers"},
    {"OfflineTest.FilmsStayOutsideAndArePointedOut", "puts somebody of its own in who frees links"},
    {"OfflineTest.NothingIsWrittenWhenItIsCancelled", "cancels by a question of its own"},
    {"RuntimeTest.AColumnThatIsMissingFromTheStartKeepsItsSlideAlone", "looks at what status pages show"},
    {"RuntimeTest.AnErrorOnOneShapeLeavesItsSlideAsItWas", "looks at what status pages show"},
    {"RuntimeTest.NullHasNoValueAndAnEmptyTextHas", "looks at the runtime's tables"},
    {"RuntimeTest.SlidesBeyondTheRangeOfTheirNumberAreReportedOnce",
     "has slides that are not there refreshed"},
    {"RuntimeTimersTest.AChangeOfSlideRestoresTheTimersAsTheyWere", "looks at timers"},
    {"RuntimeTimersTest.TimersArePacedByWhatTheDeckHolds", "looks at timers"},
};

/// They look for what the object model does not have.
constexpr Listed Different[] = {
    {"MisbehavingHost.ACallThatFailsInAnyWayEndsNothingButItself",
     "a fifth of it runs: each session loads anew"},
    {"OfflineTest.AChartWithItsDataElsewhereIsFreedOfThem", "charts of Graph have a datasheet of their own"},
    {"DrivenShapesTest.APictureThatAnEarlierShowHasLeftIsTakenBack",
     "adapters put those back at the end of each"},
};

/// They need neither another clock nor other files.
constexpr Listed Delivered[] = {
    {"AddInTest.AnUnlinkedShowHasNoRuntime", "no data"},
    {"AddInTest.StaysInertInAnotherHost", "nothing but a version"},
    {"DeliveredTest.*", "made for it"},
};

}  // namespace

bool choose(bool isDelivered) {
  if (isDelivered) {
    support::leaveIn(Delivered);
    return support::areThere(Delivered);
  }
  support::leaveOut(Different);
  support::leaveOut(Inside);
  support::leaveOut(LookInside);
  return support::areThere(Different) && support::areThere(Inside) && support::areThere(LookInside);
}

}  // namespace loaded
