// Which folders a desk looks into, and what waits until its author has agreed.
#include "app/desk/DeskAccess.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <set>

#include "app/desk/HeldJobs.h"
#include "basic/Error.h"
#include "fakes/FakeServices.h"
#include "platform/Files.h"
#include "platform/Settings.h"
#include "support/TemporaryFolder.h"
#include "web/desk/Desk.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class RootsTest : public testing::Test {
 protected:
  RootsTest() {
    fs::create_directories(folder.path() / "deck/deep");
    fs::create_directories(folder.path() / "decks");
    static_cast<void>(folder.write("deck/Today.TXT", "x"));
    static_cast<void>(folder.write("deck/a.csv", "x"));
    static_cast<void>(folder.write("deck/picture.png", "x"));
    static_cast<void>(folder.write("deck/.hidden.txt", "x"));
    static_cast<void>(folder.write("secret.txt", "x"));
    fs::create_symlink(folder.path() / "secret.txt", folder.path() / "deck/leak.txt");
    fs::create_directory_symlink(folder.path(), folder.path() / "deck/out");
    fs::create_symlink("Today.TXT", folder.path() / "deck/alias.txt");
    host::Services services = host::Current();
    services.files = &files;
    host::Use(services);
    roots = std::make_unique<Roots>(std::vector<Roots::Root>{
        {"Deck", path("deck")}, {"Gone", path("gone")}, {"Within", path("deck/deep")}});
  }
  [[nodiscard]] std::string path(const std::string& name) const { return (folder.path() / name).string(); }
  std::vector<std::string> names(const Roots::Wish& wish) const {
    std::vector<std::string> all;
    const json::Json list = roots->list(wish);
    for (const auto& entry : list.at("entries")) all.push_back(entry.at("name"));
    return all;
  }

  fakes::Machine machine;
  support::TemporaryFolder folder;
  platform::Settings settings{path("settings.ini")};
  platform::Files files{settings};
  std::unique_ptr<Roots> roots;
};

TEST_F(RootsTest, ListsWhatIsWantedAndNothingThatLeadsOut) {
  EXPECT_EQ(1U, roots->toJson().size());
  EXPECT_THAT(names({1, "", {"txt", "csv"}, false}), ElementsAre("deep", "a.csv", "alias.txt", "Today.TXT"));
  EXPECT_THAT(names({1, "", {}, true}), ElementsAre("deep"));
  EXPECT_THAT(names({1, "deep", {}, false}), ElementsAre());
}

TEST_F(RootsTest, RefusesWhatIsOutsideAsWhatIsNotThere) {
  std::set<std::string> words;
  for (const char* name : {"..", "../secret.txt", "deep/../../secret.txt", "leak.txt", "out", "out/decks",
                           "/etc/passwd", "gone.txt", ".hidden.txt", "..\\secret.txt", "C:\\x"}) {
    try {
      static_cast<void>(roots->chosen(1, name));
      ADD_FAILURE() << name;
    } catch (const web::Refusal& refusal) {
      EXPECT_EQ(404, refusal.status());
      words.insert(refusal.what());
    }
  }
  EXPECT_EQ(1U, words.size());
  EXPECT_THROW(static_cast<void>(roots->chosen(2, "")), web::Refusal);
  EXPECT_EQ(fs::canonical(path("deck/a.csv")).string(), roots->chosen(1, "a.csv"));
}

TEST_F(RootsTest, ReadsBelowItsFoldersAndWhatWasAgreedTo) {
  EXPECT_TRUE(roots->hold(path("deck/not/there.txt")));
  EXPECT_FALSE(roots->hold(path("decks/x.txt")));
  EXPECT_FALSE(roots->hold(path("deck/leak.txt")));

  DeskAccess access(*roots);
  DeskFiles guarded(files, access);
  EXPECT_NO_THROW(static_cast<void>(guarded.OpenForInput(path("deck/a.csv"))));
  for (const char* name : {"secret.txt", "deck/leak.txt", "deck/out/secret.txt"}) {
    EXPECT_THROW(static_cast<void>(guarded.OpenForInput(path(name))), basic::Error) << name;
    EXPECT_THROW(static_cast<void>(guarded.FileDateTime(path(name))), basic::Error) << name;
  }
  EXPECT_THROW(static_cast<void>(guarded.FileWithin(folder.path().string(), "secret.txt")), basic::Error);
  access.grant(path("secret.txt"));
  EXPECT_NO_THROW(static_cast<void>(guarded.OpenForInput(path("secret.txt"))));
  access.grant(path("decks"));
  static_cast<void>(folder.write("decks/a.png", "x"));
  fs::create_symlink(path("settings.ini"), path("decks/out.png"));
  EXPECT_NO_THROW(static_cast<void>(guarded.FileWithin(path("decks"), "a.png")));
  EXPECT_NO_THROW(static_cast<void>(guarded.FileDateTime(path("decks/a.png"))));
  EXPECT_THROW(static_cast<void>(guarded.FileDateTime(path("decks/out.png"))), basic::Error);
}

/// Does what it is given at once.
class AtOnce final : public host::Jobs {
  class Done final : public host::RunningJob {
    void Cancel() override {}
    [[nodiscard]] bool HasBegun() const override { return true; }
    [[nodiscard]] bool HasEnded() const override { return true; }
    [[nodiscard]] std::int64_t Elapsed() const override { return 0; }
  };

 public:
  std::shared_ptr<host::RunningJob> Start(host::Job job) override {
    const host::JobEnd end = host::DoWork(job);
    if (job.Done) job.Done(end);
    return std::make_shared<Done>();
  }
};

TEST(HeldJobsTest, KeepsWhatWasStartedWhileItHolds) {
  AtOnce jobs;
  HeldJobs held(jobs);
  std::vector<std::string> done;
  const auto start = [&](const std::string& name) {
    return held.Start({name,
                       [&done, name] { done.push_back(name); },
                       {},
                       0,
                       [&done, name](const host::JobEnd& end) {
                         if (end.How == host::JobEnd::Kind::Cancelled) done.push_back(name + " cancelled");
                       }});
  };
  held.hold();
  const auto first = start("first");
  const auto second = start("second");
  EXPECT_FALSE(first->HasBegun());
  second->Cancel();
  EXPECT_TRUE(second->HasEnded());
  held.passOthers();
  start("third");
  EXPECT_THAT(done, ElementsAre("second cancelled", "third"));
  held.release();
  EXPECT_THAT(done, ElementsAre("second cancelled", "third", "first"));
  EXPECT_TRUE(first->HasEnded());
}

}  // namespace
}  // namespace app
