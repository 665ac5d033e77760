#include "app/commands/ServiceNotices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "support/ManagerSocket.h"
#include "support/TemporaryFolder.h"

namespace app {
namespace {

using testing::HasSubstr;
using testing::Not;

class ServiceNoticesTest : public testing::Test {
 protected:
  static constexpr int Watchdog = 40;  // milliseconds

  ServiceNoticesTest() {
    ::setenv("NOTIFY_SOCKET", path_.c_str(), 1);
    ::setenv("WATCHDOG_USEC", std::to_string(Watchdog * 1000).c_str(), 1);
  }
  ~ServiceNoticesTest() override {
    ::unsetenv("NOTIFY_SOCKET");
    ::unsetenv("WATCHDOG_USEC");
  }

  std::string heard() {
    std::string all;
    for (std::string next = socket_.next(); !next.empty(); next = socket_.next()) all += next;
    return all;
  }
  /// Lets the loop turn until that was told; all that was told meanwhile.
  std::string until(const std::string& line) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    std::string all;
    while (all.find(line) == std::string::npos && std::chrono::steady_clock::now() < end) {
      loop_.DoEvents();
      all += heard();
    }
    EXPECT_THAT(all, HasSubstr(line));
    return all;
  }

  support::TemporaryFolder folder_;
  const std::string path_ = (folder_.path() / "notify").string();
  support::ManagerSocket socket_{path_};
  platform::EventLoop loop_;
  ServiceNotices::Standing standing_;
};

TEST_F(ServiceNoticesTest, AreOfTheLoopAndEndWhileAHandlerHangs) {
  ServiceNotices notices(loop_, [this] { return standing_; });
  until("WATCHDOG=1\n");
  bool hasHung = false;
  std::string meanwhile = "not looked at";
  loop_.post([&] {
    static_cast<void>(heard());
    std::this_thread::sleep_for(std::chrono::milliseconds(5 * Watchdog));
    meanwhile = heard();
    hasHung = true;
  });
  while (!hasHung) loop_.DoEvents();
  EXPECT_EQ(meanwhile, "");
  until("WATCHDOG=1\n");
  // A handler that waits for something lets the loop turn, and does not hang.
  std::string waiting;
  loop_.post([&] { waiting = until("WATCHDOG=1\n"); });
  while (waiting.empty()) loop_.DoEvents();
}

TEST_F(ServiceNoticesTest, SayOnceThatTheServiceIsReadyAndWhatHasChanged) {
  standing_.status = "Opening";
  ServiceNotices notices(loop_, [this] { return standing_; });
  EXPECT_THAT(until("STATUS=Opening\n"), Not(HasSubstr("READY")));
  standing_ = {true, "two\nlines"};
  EXPECT_THAT(until("STATUS=two lines\n"), HasSubstr("READY=1\n"));
  EXPECT_THAT(until("WATCHDOG=1\n") + until("WATCHDOG=1\n"), Not(HasSubstr("=two")));

  notices.reloaded();
  EXPECT_THAT(heard(), Not(HasSubstr("READY")));
  notices.reloading();
  notices.reloading();
  EXPECT_THAT(heard(), testing::MatchesRegex("RELOADING=1\nMONOTONIC_USEC=[0-9]+\n"));
  notices.reloaded();
  EXPECT_EQ(heard(), "READY=1\n");

  notices.stopping();
  EXPECT_THAT(heard(), HasSubstr("STOPPING=1\n"));
  EXPECT_THAT(until("WATCHDOG=1\n"), Not(HasSubstr("STATUS=two")));
}

}  // namespace
}  // namespace app
