#include "opc/FileVersions.h"

#include <gtest/gtest.h>

namespace deck::test {
namespace {

using std::chrono::milliseconds;
using Finding = opc::FileVersions::Finding;

/// Looks every quarter of a second.
class FileVersionsTest : public testing::Test {
 protected:
  Finding look() {
    now_ += milliseconds(250);
    return versions_.look(file_, now_);
  }
  /// The first finding within so many looks that is one.
  Finding lookFor(int looks) {
    Finding finding = Finding::Nothing;
    while (looks-- > 0 && finding == Finding::Nothing) finding = look();
    return finding;
  }

  std::optional<opc::FileState> file_ = opc::FileState{1, 10, 5000, 100, 0};
  opc::FileVersions versions_{*file_};
  opc::FileVersions::Time now_;
};

TEST_F(FileVersionsTest, WhatStaysIsNeverRead) { EXPECT_EQ(lookFor(100), Finding::Nothing); }

TEST_F(FileVersionsTest, AnotherFileOfTheNameIsReadOnceItRests) {
  file_ = opc::FileState{1, 11, 5000, 100, 0};
  EXPECT_EQ(look(), Finding::Nothing);
  EXPECT_EQ(look(), Finding::Nothing) << "it has stood for a quarter of a second";
  EXPECT_EQ(look(), Finding::Settled);
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "once";
}

TEST_F(FileVersionsTest, WhatIsBeingWrittenIsLeftAlone) {
  for (std::uint64_t size = 0; size < 5000; size += 500) {
    file_ = opc::FileState{1, 10, size, 101, static_cast<std::int64_t>(size)};
    EXPECT_EQ(lookFor(2), Finding::Nothing);
  }
  EXPECT_EQ(lookFor(2), Finding::Settled);
}

TEST_F(FileVersionsTest, AFileThatIsAwayForAWhileIsBeingReplaced) {
  const auto before = file_;
  file_.reset();
  EXPECT_EQ(lookFor(100), Finding::Nothing);
  file_ = before;
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "it is back as it was";
  file_->modifiedSeconds = 200;
  EXPECT_EQ(lookFor(4), Finding::Settled);
}

TEST_F(FileVersionsTest, WhatIsBrokenIsToldOnceAndOnlyIfItStays) {
  // A copy that stalls, and then goes on.
  file_->size = 100;
  ASSERT_EQ(lookFor(4), Finding::Settled);
  versions_.broken();
  EXPECT_EQ(lookFor(8), Finding::Nothing);
  file_->size = 200;
  ASSERT_EQ(lookFor(4), Finding::Settled);
  versions_.broken();
  EXPECT_EQ(lookFor(30), Finding::StillBroken);
  EXPECT_EQ(lookFor(100), Finding::Nothing);
  // One that can be read.
  file_->size = 5000;
  ASSERT_EQ(lookFor(4), Finding::Settled);
  EXPECT_EQ(lookFor(100), Finding::Nothing);
}

}  // namespace
}  // namespace deck::test
