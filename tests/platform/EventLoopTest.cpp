#include "platform/EventLoop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "platform/StartUp.h"

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class EventLoopTest : public testing::Test {
 protected:
  std::unique_ptr<host::Timer> started(std::int32_t interval, std::function<void()> handler) {
    auto timer = loop_.CreateTimer(std::move(handler));
    timer->Interval(interval);
    timer->Enabled(true);
    return timer;
  }
  /// Runs the loop for so long.
  void runFor(milliseconds duration) {
    const auto end = steady_clock::now() + duration;
    while (steady_clock::now() < end) loop_.DoEvents();
  }
  /// Runs the loop until it is so; a stalled machine gets its time.
  void runUntil(const std::function<bool()>& condition) {
    const auto end = steady_clock::now() + std::chrono::seconds(60);
    while (!condition() && steady_clock::now() < end) loop_.DoEvents();
    EXPECT_TRUE(condition());
  }
  EventLoop loop_;
};

TEST_F(EventLoopTest, WhatIsForTheOutermostLevelWaitsUntilNothingElseIsGoingOn) {
  std::vector<std::string> order;
  loop_.post([&] {
    loop_.post([&] {
      loop_.postOutermost([&] { order.emplace_back("outermost"); });
      order.emplace_back("within");
    });
    while (order.empty()) loop_.DoEvents();
    loop_.DoEvents();
    order.emplace_back("waited");
    loop_.post([&] { loop_.stop(); });
  });
  loop_.run();
  EXPECT_EQ(order, (std::vector<std::string>{"within", "waited", "outermost"}));
}

TEST_F(EventLoopTest, TimersFireWhenEnabledWithAnInterval) {
  int created = 0;
  int zero = 0;
  int running = 0;
  const auto timer = loop_.CreateTimer([&] { ++created; });
  EXPECT_FALSE(timer->Enabled());
  EXPECT_EQ(timer->Interval(), 0);
  timer->Interval(1);
  const auto never = started(0, [&] { ++zero; });
  const auto other = started(1, [&] {
    if (++running == 5) loop_.stop();
  });
  loop_.run();
  EXPECT_EQ(running, 5);
  EXPECT_EQ(created, 0);
  EXPECT_EQ(zero, 0);
}

TEST_F(EventLoopTest, ALateTimerFiresOnce) {
  int fired = 0;
  const auto timer = started(200, [&] { ++fired; });
  std::this_thread::sleep_for(milliseconds(450));
  const auto start = steady_clock::now();
  loop_.DoEvents();
  EXPECT_EQ(fired, 1);
  loop_.DoEvents();
  EXPECT_LE(fired, 1 + (steady_clock::now() - start) / milliseconds(200))
      << "the times that were missed must not follow";
}

TEST_F(EventLoopTest, AnIntervalCountsFromTheEndOfTheHandlerAndIsNeverShort) {
  steady_clock::time_point end = steady_clock::now();
  int fired = 0;
  const auto timer = started(20, [&] {
    EXPECT_GE(steady_clock::now() - end, milliseconds(28)) << "at firing " << fired;
    ++fired;
    std::this_thread::sleep_for(milliseconds(30));
    end = steady_clock::now();
  });
  runUntil([&] { return fired >= 4; });
}

TEST_F(EventLoopTest, AChangeStartsTheIntervalAnew) {
  int fired = 0;
  const auto timer = started(150, [&] { ++fired; });
  std::this_thread::sleep_for(milliseconds(160));
  timer->Enabled(false);
  timer->Enabled(true);  // the time that had passed is forgotten
  const auto anew = steady_clock::now();
  loop_.DoEvents();
  EXPECT_LE(fired, (steady_clock::now() - anew) / milliseconds(150));
  fired = 0;
  std::this_thread::sleep_for(milliseconds(160));
  timer->Interval(100'000);
  loop_.DoEvents();
  EXPECT_EQ(fired, 0);
  timer->Interval(1);
  runUntil([&] { return fired > 0; });
}

TEST_F(EventLoopTest, AHandlerMayWaitInDoEvents) {
  int inside = 0;
  int others = 0;
  bool posted = false;
  const auto other = started(1, [&] { ++others; });
  std::unique_ptr<host::Timer> timer = started(1, [&] {
    EXPECT_EQ(++inside, 1) << "it fired inside its own handler";
    timer->Interval(2);  // which starts it anew, but not before the handler is done
    loop_.post([&] { posted = true; });
    const int before = others;
    while (!posted || others < before + 3) loop_.DoEvents();
    --inside;
    loop_.stop();
  });
  loop_.run();
  EXPECT_TRUE(posted);
}

TEST_F(EventLoopTest, ATimerMayBeChangedOrDestroyedWhenItIsDueAndByItsHandler) {
  int fired = 0;
  std::unique_ptr<host::Timer> timer = started(1, [&] {
    ++fired;
    timer.reset();
  });
  int switchedOff = 0;
  std::unique_ptr<host::Timer> off = started(1, [&] {
    ++switchedOff;
    off->Enabled(false);
  });
  int slower = 0;
  std::unique_ptr<host::Timer> slow = started(1, [&] {
    ++slower;
    slow->Interval(100'000);
  });
  // Due already when it goes.
  auto never = started(1, [] { FAIL(); });
  std::this_thread::sleep_for(milliseconds(5));
  never.reset();
  runUntil([&] { return fired + switchedOff + slower >= 3; });
  runFor(milliseconds(10));
  EXPECT_EQ(fired, 1);
  EXPECT_EQ(switchedOff, 1);
  EXPECT_EQ(slower, 1);
}

TEST_F(EventLoopTest, DoEventsIsNoBusyWaitAndComesBack) {
  int calls = 0;
  const auto end = steady_clock::now() + milliseconds(50);
  for (; steady_clock::now() < end; ++calls) loop_.DoEvents();
  EXPECT_LE(calls, 50);

  // Work that never ends must not keep who waits.
  std::function<void()> again = [&] { loop_.post(again); };
  again();
  loop_.DoEvents();
}

TEST_F(EventLoopTest, RunsAgainAfterAStopFromElsewhere) {
  for (int i = 0; i < 2; ++i) {
    std::thread other([&] { loop_.stop(); });
    loop_.run();
    other.join();
  }
}

TEST_F(EventLoopTest, WhatAHandlerThrowsEndsNothing) {
  std::vector<std::string> heard;
  loop_.onFailure([&](const basic::Error& error) { heard.push_back(error.description); });
  int beats = 0;
  const auto timer = started(1, [&] {
    ++beats;
    throw basic::Error(basic::AdapterError, "test", "beat");
  });
  bool waited = false;
  loop_.post([] { throw std::runtime_error("posted"); });
  loop_.post([&] {
    runUntil([&] { return beats >= 2; });
    waited = true;
    loop_.stop();
  });
  loop_.run();
  EXPECT_TRUE(waited) << "who waits in DoEvents has nothing to do with the failure of another";
  ASSERT_GE(heard.size(), 3U);
  EXPECT_EQ(heard[0], "posted");
  EXPECT_EQ(heard[1], "beat");
}

TEST_F(EventLoopTest, WithoutAHearerWhatAHandlerThrowsComesOut) {
  loop_.post([] { throw basic::Error(basic::AdapterError, "test", "posted"); });
  EXPECT_THROW(loop_.run(), basic::Error);
}

TEST_F(EventLoopTest, SignalsComeThroughTheLoop) {
  std::vector<int> signals;
  loop_.onSignal([&](int signal) {
    signals.push_back(signal);
    signals.size() == 1 ? static_cast<void>(std::raise(SIGINT)) : loop_.stop();
  });
  std::raise(SIGTERM);
  loop_.run();
  EXPECT_EQ(signals, (std::vector{SIGTERM, SIGINT}));
}

TEST_F(EventLoopTest, AHangUpWaitsForWhoTakesItUnlessItIsIgnored) {
  const auto signalsOf = [&] {
    prepareProcess();
    std::raise(SIGHUP);
    EventLoop loop;
    std::vector<int> signals;
    loop.onSignal([&](int signal) {
      signals.push_back(signal);
      if (signal == SIGTERM) loop.stop();
    });
    std::raise(SIGTERM);
    loop.run();
    return signals;
  };
  EXPECT_EQ(signalsOf(), (std::vector{SIGHUP, SIGTERM}));
  std::signal(SIGHUP, SIG_IGN);
  EXPECT_EQ(signalsOf(), std::vector{SIGTERM});
  std::signal(SIGHUP, SIG_DFL);
}

TEST(StartUpTest, ClosedStandardDescriptorsAreOpenedOnNothing) {
  const pid_t child = fork();
  if (child == 0) {
    close(STDIN_FILENO);
    close(STDERR_FILENO);
    prepareProcess();
    struct stat nothing {};
    struct stat input {};
    struct stat error {};
    stat("/dev/null", &nothing);
    const bool areOpen = fstat(STDIN_FILENO, &input) == 0 && fstat(STDERR_FILENO, &error) == 0;
    const bool areNothing = input.st_rdev == nothing.st_rdev && error.st_rdev == nothing.st_rdev;
    const bool isPipeHarmless = std::signal(SIGPIPE, SIG_DFL) == SIG_IGN;
    _exit(areOpen && areNothing && isPipeHarmless && open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace platform
