// Runs the scenarios through the module: each must load it, call the host, and leave nothing behind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

#include "windows/com/Text.h"
#include "windows/loaded/LeftOut.h"
#include "windows/loaded/ModulePassage.h"

namespace {

class Watch final : public testing::EmptyTestEventListener {
 public:
  explicit Watch(const loaded::ModulePassage& passage) : passage_(passage) {}

 private:
  void OnTestStart(const testing::TestInfo&) override {
    strict::world().calls = 0;
    entries_ = passage_.entries();
  }
  void OnTestEnd(const testing::TestInfo&) override {
    EXPECT_GT(passage_.entries(), entries_) << "the module was not asked for its object";
    EXPECT_GT(strict::world().calls, 0) << "the host was not called";
    EXPECT_EQ(strict::world().objects, 0) << "objects that somebody still refers to";
    EXPECT_TRUE(passage_.canUnload()) << "objects of the module that somebody still holds";
  }

  const loaded::ModulePassage& passage_;
  int entries_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const bool isDelivered = argc > 1 && std::string_view(argv[1]) == "--delivered";
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int result = 0;
  {
    loaded::ModulePassage passage(windows::com::wide(isDelivered ? MODULE : MODULE_WITH_DOOR));
    fakes::passage = &passage;
    testing::UnitTest::GetInstance()->listeners().Append(new Watch(passage));
    result = loaded::choose(isDelivered) ? RUN_ALL_TESTS() : 1;
    fakes::passage = nullptr;
  }
  CoUninitialize();
  return result;
}
