#include "platform/NetworkDrives.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <semaphore>
#include <sstream>
#include <thread>
#include <vector>

#include "fakes/FakeServices.h"
#include "platform/Files.h"
#include "platform/Looks.h"
#include "platform/Sandbox.h"

namespace platform {
namespace {

using MountTableTest = Sandbox;

TEST_F(MountTableTest, TellsByPathAloneWhatLiesElsewhere) {
  MountTable table;
  std::istringstream text(
      "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
      "30 22 0:40 / /mnt/store rw - nfs4 server:/export rw\n"
      "31 22 0:41 / /mnt/with\\040blank rw shared:5 master:2 - cifs //server/share rw\n"
      "32 30 8:2 / /mnt/store/local rw - ext4 /dev/sdb1 rw\n"
      "33 22 0:42 / /mnt/pictures rw - fuse.sshfs host: rw\n"
      "34 22 8:3 / /mnt/stick rw - fuseblk /dev/sdc1 rw\n"
      "35 22 0:43 / /mnt/hidden rw - nfs server:/a rw\n"
      "36 35 8:4 / /mnt/hidden rw - ext4 /dev/sdd1 rw\n");
  table.read(text);
  const auto idOf = [&](const std::string& path) {
    const auto mount = table.networkMountOf(path);
    return mount ? mount->id : 0;
  };
  EXPECT_EQ(idOf("/mnt/store"), 30);
  EXPECT_EQ(idOf("/mnt/store/prices.txt"), 30);
  EXPECT_EQ(idOf("/mnt/storeroom/prices.txt"), 0);
  EXPECT_EQ(idOf("/mnt/../mnt/./store/prices.txt"), 30);
  EXPECT_EQ(idOf("/mnt/store/local/prices.txt"), 30) << "the way there leads over the network";
  EXPECT_EQ(idOf("/mnt/with blank/x"), 31);
  EXPECT_EQ(idOf("/mnt/pictures/soup.jpg"), 33);
  EXPECT_EQ(idOf("/mnt/stick/soup.jpg"), 0);
  EXPECT_EQ(idOf("/mnt/hidden/x"), 0);
  EXPECT_EQ(idOf("/srv/prices.txt"), 0);

  std::filesystem::create_symlink("/mnt/store/a/b", folder_ + "/link");
  std::filesystem::create_symlink("link/../c", folder_ + "/second");
  std::filesystem::create_symlink("round", folder_ + "/round");
  EXPECT_EQ(idOf(folder_ + "/second/x.txt"), 30);
  EXPECT_EQ(idOf(folder_ + "/round/x.txt"), 0);
}

class NetworkDrivesTest : public Sandbox {
 protected:
  /// Work that a dead server holds up.
  struct Held {
    std::promise<void> promise;
    std::shared_future<void> released = promise.get_future().share();
    host::Drives::Work work() {
      return [released = released](const auto&) { released.wait(); };
    }
    ~Held() { promise.set_value(); }
  };

  NetworkDrivesTest() {
    host::Services services;
    services.drives = &drives_;
    host::Use(services);
  }
  ~NetworkDrivesTest() override { host::Use({}); }

  void letTimePass(std::int64_t milliseconds) {
    loop_.onDoEvents = [this, milliseconds] { loop_.Pass(milliseconds); };
  }
  std::string errorOfAsking(
      const std::string& path, host::Drives::Work work = [](const auto&) {}) {
    return errorOf([&] { drives_.Ask(path, work); });
  }
  static std::string silent(const std::string& path, const std::string& drive) {
    return "'" + path + "' cannot be reached: the network drive '" + drive + "' does not answer.";
  }

  /// Time passes while somebody waits, and only then.
  fakes::Loop loop_;
  fakes::Clock clock_{loop_};
  std::vector<NetworkMount> mounts_ = {{1, "/far"}, {2, "/other"}};
  NetworkDrives drives_{loop_, clock_, [this](const std::string& path) -> std::optional<NetworkMount> {
                          for (const NetworkMount& mount : mounts_) {
                            if (path.starts_with(mount.point)) return mount;
                          }
                          return std::nullopt;
                        }};
};

TEST_F(NetworkDrivesTest, TheLoopRunsWhileAnotherMachineIsAsked) {
  std::thread::id local;
  drives_.Ask("/near/x", [&](const auto&) { local = std::this_thread::get_id(); });
  EXPECT_EQ(local, std::this_thread::get_id()) << "local files are asked on the spot";
  EXPECT_EQ(loop_.doEvents, 0);
  std::promise<void> answer;
  loop_.onDoEvents = [&] {
    if (loop_.doEvents == 5) answer.set_value();
  };
  const std::thread::id where = host::OnDrive("/far/x", [wait = answer.get_future().share()](const auto&) {
    wait.wait();
    return std::this_thread::get_id();
  });
  EXPECT_NE(where, std::this_thread::get_id());
  EXPECT_GE(loop_.doEvents, 5);
  EXPECT_EQ(errorOfAsking("/far/x", [](const auto&) { throw basic::Error(53, "x", "not there"); }),
            "not there");
}

TEST_F(NetworkDrivesTest, ASilentDriveFailsAllAtOnceAndIsAskedAgainEvery10Seconds) {
  Held held;
  letTimePass(100);
  EXPECT_EQ(errorOfAsking("/far/x", held.work()), silent("/far/x", "/far"));
  EXPECT_GE(loop_.Now(), 2000);
  EXPECT_LE(loop_.Now(), 2200);

  const auto failsAtOnce = [&](const std::string& path, const host::Drives::Work& work) {
    const int before = loop_.doEvents;
    EXPECT_EQ(errorOfAsking(path, work), silent(path, "/far"));
    EXPECT_EQ(loop_.doEvents, before) << "nobody waits for a silent drive";
  };
  auto asked = std::make_shared<std::atomic<int>>(0);
  const auto count = [asked, work = held.work()](const auto& gettingOn) {
    ++*asked;
    work(gettingOn);
  };
  loop_.Pass(9000);
  failsAtOnce("/far/y", count);
  EXPECT_EQ(*asked, 0);
  loop_.Pass(1000);
  failsAtOnce("/far/y", count);
  while (*asked == 0) std::this_thread::yield();
  loop_.Pass(9000);
  failsAtOnce("/far/y", count);
  EXPECT_EQ(*asked, 1);

  letTimePass(0);
  drives_.Ask("/other/x", [](const auto&) {});
}

TEST_F(NetworkDrivesTest, ADriveThatAnswersAgainIsAskedAsBefore) {
  Held held;
  letTimePass(100);
  EXPECT_NE(errorOfAsking("/far/x", held.work()), "no error");
  letTimePass(0);
  loop_.Pass(10000);
  EXPECT_NE(errorOfAsking("/far/x"), "no error");
  // What was tried in the background has been answered; the next one is let through.
  std::string error;
  do {
    error = errorOfAsking("/far/x");
  } while (error != "no error");
}

TEST_F(NetworkDrivesTest, WhatIsLongButGetsOnIsNotSilent) {
  constexpr int Steps = 5;
  std::counting_semaphore<> go(0);
  std::counting_semaphore<> moved(0);
  loop_.onDoEvents = [&] {
    if (loop_.doEvents > Steps) return;
    loop_.Pass(1500);
    go.release();
    moved.acquire();
  };
  drives_.Ask("/far/x", [&](const auto& gettingOn) {
    for (int i = 0; i < Steps; ++i) {
      go.acquire();
      gettingOn();
      moved.release();
    }
  });
  EXPECT_EQ(loop_.Now(), Steps * 1500);
}

TEST_F(NetworkDrivesTest, OfALookThatIsLateTheLastAnswerStands) {
  Looks<int> looks;
  const auto look = [&](const std::string& name, std::function<int()> work) {
    return looks.at(name, "/far/" + name, std::move(work));
  };
  for (const char* name : {"x", "y"}) EXPECT_EQ(look(name, [] { return 1; }), 1);
  {
    Held held;
    const auto late = [hold = held.work()] { return hold([] {}), 2; };
    letTimePass(50);
    EXPECT_EQ(look("x", late), 1);
    EXPECT_EQ(loop_.Now(), 200);
  }
  letTimePass(0);
  int seen = 1;
  while (seen == 1) seen = look("x", [] { return 3; });
  EXPECT_EQ(seen, 3) << "the late answer is old";

  Held held;
  const auto never = [hold = held.work()] { return hold([] {}), 4; };
  letTimePass(50);
  EXPECT_EQ(look("x", never), 3);
  const int before = loop_.doEvents;
  EXPECT_EQ(look("y", never), 1);
  EXPECT_EQ(look("x", never), 3);
  EXPECT_EQ(loop_.doEvents, before) << "one that is late is enough to wait for";
  loop_.Pass(2000);
  EXPECT_EQ(errorOf([&] { look("x", never); }), silent("/far/x", "/far"));
  EXPECT_EQ(errorOf([&] { look("y", never); }), silent("/far/y", "/far"));
}

TEST_F(NetworkDrivesTest, ThreadsThatHangAreFew) {
  Held held;
  auto begun = std::make_shared<std::atomic<int>>(0);
  const auto work = [begun, hold = held.work()](const auto& gettingOn) {
    ++*begun;
    hold(gettingOn);
  };
  letTimePass(100);
  for (int i = 0; i < 100; ++i) {
    EXPECT_NE(errorOfAsking("/far/x", work), "no error");
    loop_.Pass(10000);
  }
  while (*begun < 4) std::this_thread::yield();
  EXPECT_EQ(*begun, 4);
}

TEST_F(NetworkDrivesTest, FilesOfAnotherMachineAreReadAndLookedAtAsLocalOnesAre) {
  mounts_ = {{1, folder_}};
  Settings settings{folder_ + "/settings.ini"};
  Files files(settings);
  const std::string path = write("data/Prices.txt", std::string(3'000'000, 'x'));
  write("settings.ini", "[Paths]\nC:\\data = " + folder_ + "/data\n");
  EXPECT_EQ(files.OpenForInput("C:\\data\\PRICES.TXT")->ReadAll().size, 3'000'000U);
  EXPECT_EQ(files.FileDateTime("C:\\data\\prices.txt").serial, files.FileDateTime(path).serial);
  EXPECT_EQ(files.FileWithin(folder_ + "/data", "prices.TXT"), std::filesystem::canonical(path));
  EXPECT_EQ(errorOf([&] { (void)files.OpenForInput(folder_ + "/none"); }),
            "'" + folder_ + "/none' cannot be opened: there is no such file or folder.");
}

TEST_F(NetworkDrivesTest, WhoMayNotWaitGetsLocalPathsAlone) {
  Settings settings{folder_ + "/settings.ini"};
  const PathRules rules(settings);
  write("settings.ini", "[Paths]\nZ: = /far\nC:\\data = " + folder_ + "/data\n");
  const std::string path = write("data/Prices.txt", "");
  EXPECT_EQ(rules.translateLocal("C:\\data\\PRICES.TXT"), path);
  EXPECT_EQ(rules.translateLocal(path), path);
  std::filesystem::create_symlink("/far/x", folder_ + "/data/Link");
  mounts_.push_back({3, folder_ + "/data/Link"});  // as the table of mounts follows links
  for (const char* far : {"Z:\\x.txt", "/far/x.txt", "/far\\x.txt", "C:\\data\\LINK"}) {
    EXPECT_EQ(rules.translateLocal(far), std::nullopt) << far;
  }
}

}  // namespace
}  // namespace platform
