#include "opc/FileVersions.h"

#include <gmock/gmock.h>

namespace opc::test {
namespace {

using std::chrono::milliseconds;
using Finding = FileVersions::Finding;

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

  std::optional<FileState> file_ = FileState{1, 10, 5000, 100, 0, 100, 0};
  FileVersions versions_{*file_};
  FileVersions::Time now_;
};

TEST_F(FileVersionsTest, AnotherFileOfTheNameIsReadOnceItRests) {
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "what stays is never read";
  file_->inode = 11;
  EXPECT_EQ(look(), Finding::Nothing);
  EXPECT_EQ(look(), Finding::Nothing) << "it has stood for a quarter of a second";
  EXPECT_EQ(look(), Finding::Due);
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "once";
  for (std::uint64_t size = 0; size < 5000; size += 500) {
    file_->size = size;
    EXPECT_EQ(lookFor(2), Finding::Nothing) << "it is being written";
  }
  EXPECT_EQ(lookFor(2), Finding::Due);
}

TEST_F(FileVersionsTest, AFileThatIsAwayForAWhileIsBeingReplaced) {
  const auto before = file_;
  file_.reset();
  EXPECT_EQ(lookFor(100), Finding::Nothing);
  file_ = before;
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "it is back as it was";
  file_->modifiedSeconds = 200;
  EXPECT_EQ(lookFor(4), Finding::Due);
}

TEST_F(FileVersionsTest, WhatIsBrokenIsToldOnceAndOnlyIfItStays) {
  // A copy that stalls, and then goes on.
  file_->size = 100;
  ASSERT_EQ(lookFor(4), Finding::Due);
  versions_.broken();
  EXPECT_EQ(lookFor(8), Finding::Nothing);
  file_->size = 200;
  ASSERT_EQ(lookFor(4), Finding::Due);
  versions_.broken();
  EXPECT_EQ(lookFor(30), Finding::StillBroken);
  // One that can be read.
  file_->size = 5000;
  ASSERT_EQ(lookFor(4), Finding::Due);
  EXPECT_EQ(lookFor(100), Finding::Nothing);
}

TEST_F(FileVersionsTest, WhatIsBrokenIsTriedAgainThoughItStaysAsItIs) {
  file_->size = 100;
  ASSERT_EQ(lookFor(4), Finding::Due);
  int tries = 0;
  int told = 0;
  versions_.broken();
  for (int i = 0; i < 4 * 60; ++i) {
    const Finding finding = look();
    tries += finding == Finding::Due ? 1 : 0;
    told += finding == Finding::StillBroken ? 1 : 0;
    if (finding == Finding::Due) versions_.broken();
    // The server of its folder may be away for a moment.
    if (i == 100) versions_.look(std::nullopt, now_);
  }
  EXPECT_THAT(tries, testing::AllOf(testing::Ge(10), testing::Le(12))) << "in a minute";
  EXPECT_EQ(told, 1);
  ASSERT_EQ(lookFor(30), Finding::Due);
  EXPECT_EQ(lookFor(100), Finding::Nothing) << "it could be read";
}

}  // namespace
}  // namespace opc::test
