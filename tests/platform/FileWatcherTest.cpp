#include "platform/FileWatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>

#include "platform/Sandbox.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class FileWatcherTest : public Sandbox {
 protected:
  /// Watches files in the sandbox by their names, in place of those before.
  void watch(const std::set<std::string>& names) {
    told_.clear();
    std::set<std::string> paths;
    for (const std::string& name : names) paths.insert(path(name));
    watch_->Files(paths);
  }
  std::string path(const std::string& name) const { return folder_ + "/" + name; }
  void rename(const std::string& name) {
    write(name + ".new", "new");
    fs::rename(path(name + ".new"), path(name));
  }
  /// The names told so far, once that one was told; it is watched and changes behind the others.
  std::vector<std::string> toldUntil(const std::string& last) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    const auto isTold = [&] { return std::find(told_.begin(), told_.end(), last) != told_.end(); };
    while (!isTold() && std::chrono::steady_clock::now() < end) loop_.DoEvents();
    EXPECT_TRUE(isTold()) << last << " was not told";
    return told_;
  }

  EventLoop loop_;
  std::string far_;
  FileWatcher watcher_{loop_, [this](std::string_view file) {
                         return file == far_ ? std::nullopt : std::optional<std::string>(file);
                       }};
  std::vector<std::string> told_;
  std::unique_ptr<host::FileWatch> watch_ = watcher_.CreateWatch([this](const std::string& file) {
    told_.push_back(fs::path(file).lexically_relative(folder_).string());
  });
};

TEST_F(FileWatcherTest, TellsOnceOfWhatWasWrittenOrRenamed) {
  write("written", "1");
  watch({"renamed", "written", "other", "last"});
  rename("renamed");
  rename("unwatched");
  write("written", "2");
  write("written", "3");
  rename("renamed");
  write("last", "");
  EXPECT_THAT(toldUntil("last"), testing::UnorderedElementsAre("renamed", "written", "last"));
  watch({"renamed", "last"});
  rename("written");
  rename("renamed");
  write("last", "");
  EXPECT_THAT(toldUntil("last"), testing::UnorderedElementsAre("renamed", "last"));
  // What changed before it was asked again is forgotten.
  watch({"renamed"});
  rename("renamed");
  watch({"renamed", "last"});
  write("last", "");
  EXPECT_THAT(toldUntil("last"), ElementsAre("last"));
}

TEST_F(FileWatcherTest, FollowsFoldersThatGoAndComeAndLinks) {
  watch({"data/a", "last"});  // no such folder yet
  write("data/a", "1");
  watch({"data/a", "last"});
  rename("data/a");
  EXPECT_THAT(toldUntil("data/a"), ElementsAre("data/a"));
  watch({"data/a", "last"});
  fs::remove_all(path("data"));
  write("data/a", "2");
  write("last", "");
  EXPECT_THAT(toldUntil("last"), ElementsAre("last"));
  watch({"data/a"});
  rename("data/a");
  EXPECT_THAT(toldUntil("data/a"), ElementsAre("data/a"));

  // Another folder of that name.
  fs::rename(path("data"), path("old"));
  write("data/a", "3");
  watch({"data/a", "last"});
  rename("old/a");
  write("last", "");
  EXPECT_THAT(toldUntil("last"), ElementsAre("last"));

  fs::create_symlink(path("old/a"), path("link"));
  watch({"link"});
  rename("old/a");
  EXPECT_THAT(toldUntil("link"), ElementsAre("link"));
}

TEST_F(FileWatcherTest, IsDeafWhereItCannotHear) {
  far_ = path("far");
  watch({"far", "last"});
  rename("far");
  write("last", "");
  EXPECT_THAT(toldUntil("last"), ElementsAre("last"));

  // No descriptor is left, then there is one again.
  watch_ = watcher_.CreateWatch([this](const std::string&) { told_.emplace_back("heard"); });
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit none{0, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  watch({"a"});
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  rename("a");
  loop_.DoEvents();
  EXPECT_THAT(told_, IsEmpty());
  watch({"a"});
  rename("a");
  EXPECT_THAT(toldUntil("heard"), ElementsAre("heard"));
}

TEST_F(FileWatcherTest, AHandlerMayDestroyTheWatch) {
  watch_ = watcher_.CreateWatch([this](const std::string&) {
    told_.emplace_back("once");
    watch_.reset();
  });
  watch({"a", "b"});
  rename("a");
  rename("b");
  EXPECT_THAT(toldUntil("once"), ElementsAre("once"));
  loop_.DoEvents();
  EXPECT_THAT(told_, ElementsAre("once"));
}

}  // namespace
}  // namespace platform
