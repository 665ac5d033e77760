#include "process/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <optional>

#include "support/TemporaryFolder.h"

namespace process {
namespace {

namespace fs = std::filesystem;

class TemporaryFolderTest : public testing::Test {
 protected:
  TemporaryFolderTest() { setenv("TMPDIR", among_.c_str(), 1); }
  ~TemporaryFolderTest() override { unsetenv("TMPDIR"); }
  fs::path leave(const std::string& name, std::chrono::seconds age) {
    fs::create_directories(among_ / name / "profile");
    std::ofstream(among_ / name / "profile" / "settings") << "x";
    makeOld(among_ / name, age);
    return among_ / name;
  }
  static void makeOld(const fs::path& folder, std::chrono::seconds age) {
    fs::last_write_time(folder, fs::file_time_type::clock::now() - age);
  }

  support::TemporaryFolder temporary_;
  const fs::path& among_ = temporary_.path();
};

TEST_F(TemporaryFolderTest, GoesWithAllThatIsInIt) {
  std::optional<TemporaryFolder> folder(std::in_place);
  const fs::path path = folder->path();
  std::ofstream(path / "file") << "x";
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0700));
  folder.reset();
  EXPECT_TRUE(fs::is_empty(among_));
}

TEST_F(TemporaryFolderTest, TakesAwayWhatKilledProgramsLeftAndNothingElse) {
  constexpr std::chrono::seconds Old{120};
  const fs::path left = leave("lumenfold-work.a1B2c3", Old);
  const fs::path recent = leave("lumenfold-work.recent", std::chrono::seconds(0));
  const fs::path others = leave("lumenfold.a1B2c3", Old);
  const TemporaryFolder held;
  makeOld(held.path(), Old);
  EXPECT_FALSE(fs::exists(left));
  const TemporaryFolder next;
  EXPECT_TRUE(fs::exists(held.path()));
  EXPECT_TRUE(fs::exists(recent));
  EXPECT_TRUE(fs::exists(others));
}

}  // namespace
}  // namespace process
