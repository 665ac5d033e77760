// The loop: timers, what is posted, what may not begin in the midst of something else; and dialogs of the
// system, which run loops of their own.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "basic/Error.h"
#include "windows/com/Guard.h"
#include "windows/platform/Machine.h"
#include "windows/support/Windows.h"

namespace windows::platform {

struct LoopTest : testing::Test {
  /// Runs the loop until it is so.
  void until(const std::function<bool()>& isSo) {
    while (!isSo()) machine.loop.DoEvents();
  }
  Machine machine;
};

TEST_F(LoopTest, TimersAreNeverEarlyAndNeverLieOnThemselves) {
  int ticks = 0;
  bool isWithin = false;
  std::unique_ptr<host::Timer> timer;
  timer = machine.loop.CreateTimer([&] {
    EXPECT_FALSE(isWithin);
    isWithin = true;
    ++ticks;
    if (ticks == 1) {
      const std::int64_t begun = machine.clock.TickCount();
      until([&] { return machine.clock.TickCount() - begun > 30; });
    }
    isWithin = false;
  });
  timer->Interval(5);
  machine.loop.DoEvents();
  EXPECT_EQ(ticks, 0) << "created off";
  const std::int64_t begun = machine.clock.TickCount();
  timer->Enabled(true);
  until([&] { return ticks == 3; });
  EXPECT_GE(machine.clock.TickCount() - begun, 3 * (5 + MessageLoop::Lateness) + 30);
}

TEST_F(LoopTest, AHandlerMayEndItsOwnTimerAndThrow) {
  int ticks = 0;
  std::unique_ptr<host::Timer> first;
  first = machine.loop.CreateTimer([&] {
    ++ticks;
    first.reset();
  });
  const auto second = machine.loop.CreateTimer([&] {
    ++ticks;
    throw std::runtime_error("not for the host");
  });
  for (const auto& each : {first.get(), second.get()}) {
    each->Interval(1);
    each->Enabled(true);
  }
  until([&] { return ticks == 4; });
  EXPECT_EQ(first, nullptr);
  EXPECT_EQ(com::Entrance::depth(), 0);
}

TEST_F(LoopTest, WhatWantsTheBottomWaitsForIt) {
  std::vector<std::string> told;
  machine.loop.post([&] {
    machine.loop.postOutermost([&] { told.push_back("bottom"); });
    bool isOver = false;
    machine.loop.post([&] { isOver = true; });
    until([&] { return isOver; });
    told.push_back("handler");
  });
  until([&] { return told.size() == 2; });
  EXPECT_EQ(told, (std::vector<std::string>{"handler", "bottom"}));
}

TEST_F(LoopTest, JobsFollowEachOtherAndCanBeCancelled) {
  std::vector<std::string> told;
  bool isCancelled = false;
  const auto start = [&](const std::string& name) {
    host::Job job;
    job.Work = [&, name] {
      if (name != "b") return;
      until([&] { return isCancelled; });
      throw basic::Error(basic::AdapterError, "test", "given up");
    };
    job.Cancel = [&] { isCancelled = true; };
    job.Done = [&, name](const host::JobEnd& end) {
      told.push_back(name + std::to_string(static_cast<int>(end.How)));
    };
    return machine.jobs.Start(std::move(job));
  };
  start("a");
  const auto second = start("b");
  start("c");
  const auto impatient = machine.loop.CreateTimer([&] {
    if (second->HasBegun()) second->Cancel();
  });
  impatient->Interval(1);
  impatient->Enabled(true);
  until([&] { return told.size() == 3; });
  EXPECT_EQ(told, (std::vector<std::string>{"a0", "b2", "c0"}));
}

TEST_F(LoopTest, ATimerThatOutlivesTheLoopIsQuiet) {
  auto loop = std::make_unique<MessageLoop>();
  const auto timer = loop->CreateTimer([] { FAIL(); });
  loop.reset();
  timer->Interval(1);
  timer->Enabled(true);
  EXPECT_TRUE(timer->Enabled());
}

TEST_F(LoopTest, MessagesToQuitAreLeftForTheHost) {
  ::PostQuitMessage(7);
  for (int i = 0; i < 3; ++i) machine.loop.DoEvents();
  MSG message{};
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(LoopTest, ABoxAnswersAndTimersGoOnMeanwhile) {
  int ticks = 0;
  const auto timer = machine.loop.CreateTimer([&] {
    const HWND box = test::dialogCalled("Titel é");
    if (box != nullptr && ++ticks == 3) test::press(box, IDNO);
  });
  timer->Interval(1);
  timer->Enabled(true);
  EXPECT_EQ(
      machine.messageBox.MsgBox("Weiter?\r\nJa oder nein", host::vbYesNo + host::vbExclamation, "Titel é"),
      host::MsgBoxResult::No);
  EXPECT_EQ(ticks, 3);
}

TEST_F(LoopTest, TheShellBrowsesAndKnowsTheComputer) {
  const auto timer = machine.loop.CreateTimer([] {
    const HWND dialog = test::dialogCalled("Browse for Folder");
    if (dialog != nullptr) test::press(dialog, IDCANCEL);
  });
  timer->Interval(1);
  timer->Enabled(true);
  constexpr std::uint32_t FoldersAlone = 1;
  EXPECT_FALSE(machine.shell.BrowseForFolder(0, "Select a folder.", {}, FoldersAlone));
  EXPECT_FALSE(machine.shell.ComputerName().value_or("").empty());
  EXPECT_FALSE(machine.shell.ShellExecute("open", "Z:\\there is no such file", 5));
}

}  // namespace windows::platform
