#pragma once

#include <gtest/gtest.h>

namespace conformance {

/// Takes out of the run what cannot run by way of automation. False, with a word on the standard error, when
/// the list names what is not there.
[[nodiscard]] bool leaveOut();

/// Whether a test is listed as one that asks nothing of a host: it runs, and must call nothing.
[[nodiscard]] bool asksNothing(const testing::TestInfo& test);

}  // namespace conformance
