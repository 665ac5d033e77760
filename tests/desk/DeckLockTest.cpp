#include "app/desk/DeckLock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "support/TemporaryFolder.h"

namespace app::test {
namespace {

namespace fs = std::filesystem;

struct DeckLockTest : testing::Test {
  support::TemporaryFolder folder;
  std::string deck = folder.write("shop.pptx", "deck");
  std::string state = folder.path().string() + "/state/desk";
};

TEST_F(DeckLockTest, WhoeverComesSecondReadsTheAddressByWhicheverPath) {
  DeckLock first(state, deck);
  EXPECT_FALSE(first.isTaken());
  EXPECT_EQ(first.problem(), "");
  first.tell("http://127.0.0.1:2001/#token=x");
  fs::create_symlink(deck, folder.path() / "link.pptx");
  fs::create_hard_link(deck, folder.path() / "hard.pptx");
  for (const std::string name : {"shop.pptx", "link.pptx", "hard.pptx"}) {
    const DeckLock second(state, folder.path() / name);
    EXPECT_TRUE(second.isTaken()) << name;
    EXPECT_EQ(second.theirAddress(), "http://127.0.0.1:2001/#token=x") << name;
  }
  EXPECT_FALSE(DeckLock(state, folder.write("other.pptx", "deck")).isTaken());

  // A save puts another file in its place; the old one may be edited where it still is.
  fs::rename(folder.write("new", "deck 2"), deck);
  first.follow();
  fs::create_hard_link(deck, folder.path() / "hard2.pptx");
  EXPECT_TRUE(DeckLock(state, folder.path() / "hard2.pptx").isTaken());
  EXPECT_FALSE(DeckLock(state, folder.path() / "hard.pptx").isTaken());
}

TEST_F(DeckLockTest, GoesWithItsProcessHoweverThatEnds) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    DeckLock lock(state, deck);
    lock.tell("theirs");
    static_cast<void>(::write(ready[1], "x", 1) == 1);
    while (true) ::pause();
  }
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  EXPECT_EQ(DeckLock(state, deck).theirAddress(), "theirs");
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  ::close(ready[0]);
  ::close(ready[1]);
  {
    DeckLock lock(state, deck);
    EXPECT_FALSE(lock.isTaken());
  }
  EXPECT_TRUE(fs::is_empty(state));
}

TEST_F(DeckLockTest, AFolderThatCannotBeWrittenKeepsNobodyFromEditing) {
  const DeckLock lock(folder.write("file", "") + "/desk", deck);
  EXPECT_FALSE(lock.isTaken());
  EXPECT_NE(lock.problem(), "");
}

}  // namespace
}  // namespace app::test
