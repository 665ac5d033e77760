// Runs the scenarios by way of automation: each must call it, and leave no reference behind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "windows/conformance/AutomationPassage.h"
#include "windows/conformance/LeftOut.h"

namespace {

class Watch final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { strict::world().calls = 0; }
  void OnTestEnd(const testing::TestInfo& test) override {
    LF2000::modGlobalFunctions::Reset();  // it keeps the host and Excel
    EXPECT_EQ(strict::world().calls == 0, conformance::asksNothing(test))
        << strict::world().calls << " calls; LeftOut.cpp lists those that make none";
    EXPECT_EQ(strict::world().objects, 0) << "objects that somebody still refers to";
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int result = 0;
  {
    conformance::AutomationPassage passage;
    fakes::passage = &passage;
    testing::UnitTest::GetInstance()->listeners().Append(new Watch);
    result = conformance::leaveOut() ? RUN_ALL_TESTS() : 1;
    fakes::passage = nullptr;
  }
  CoUninitialize();
  return result;
}
