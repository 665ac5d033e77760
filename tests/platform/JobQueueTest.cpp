// Jobs wait for each other at the bottom of the loop, and end early by their user or by the clock.

#include "platform/jobs/JobQueue.h"

#include <gtest/gtest.h>

#include <utility>

#include "basic/Error.h"
#include "fakes/FakeServices.h"

namespace platform {
namespace {

using Kind = host::JobEnd::Kind;

struct JobQueueTest : testing::Test {
  fakes::Loop loop;
  fakes::Clock clock{loop};
  std::vector<std::function<void()>> posted;
  JobQueue queue{loop, clock,
                 [this](std::function<void()> handler) { posted.push_back(std::move(handler)); }};
  std::vector<std::string> log;

  JobQueueTest() {
    loop.onDoEvents = [this] { loop.Advance(50); };
  }

  /// Runs what was posted to the bottom, as the loop does, until nothing is left.
  void runBottom() {
    while (!posted.empty()) {
      const auto handlers = std::exchange(posted, {});
      for (const auto& handler : handlers) handler();
    }
  }
  /// Waits in the loop for so many milliseconds, or until it is cancelled.
  host::Job waiting(const std::string& caption, std::int64_t milliseconds, std::int32_t deadline = 0) {
    const auto isCancelled = std::make_shared<bool>(false);
    host::Job job;
    job.Caption = caption;
    job.Deadline = deadline;
    job.Work = [this, caption, milliseconds, isCancelled] {
      log.push_back("begin " + caption);
      for (const std::int64_t end = loop.Now() + milliseconds; loop.Now() < end;) {
        loop.DoEvents();
        if (*isCancelled) throw basic::Error(7, "test", "given up");
      }
    };
    job.Cancel = [isCancelled] { *isCancelled = true; };
    job.Done = hear(caption);
    return job;
  }
  std::function<void(const host::JobEnd&)> hear(const std::string& caption) {
    return [this, caption](const host::JobEnd& end) {
      const char* const names[] = {"done", "failed", "cancelled", "timed out"};
      log.push_back(caption + " " + names[static_cast<int>(end.How)] +
                    (end.Description.empty() ? "" : ": " + end.Description));
    };
  }
  std::vector<std::string> captions() const {
    std::vector<std::string> all;
    for (const auto& view : queue.current()) {
      all.push_back(view.caption + (view.hasBegun ? " " + std::to_string(view.elapsed) : ""));
    }
    return all;
  }
};

using Log = std::vector<std::string>;

TEST_F(JobQueueTest, TellsHowManyOfThoseAskedForTogetherAreDone) {
  std::vector<std::string> steps;
  loop.onDoEvents = [&] {
    loop.Advance(50);
    const JobQueue::View view = queue.current().front();
    steps.push_back(view.caption + " " + std::to_string(view.step) + "/" + std::to_string(view.maximum));
  };
  for (const char* caption : {"a", "b", "c"}) queue.Start(waiting(caption, 50));
  runBottom();
  queue.Start(waiting("alone", 50));
  runBottom();
  EXPECT_EQ(steps, (std::vector<std::string>{"a 0/3", "b 1/3", "c 2/3", "alone 0/0"}));
}

TEST_F(JobQueueTest, OneAfterTheOtherAndNeverWithinAnother) {
  const auto first = queue.Start(waiting("a", 200));
  EXPECT_TRUE(log.empty()) << "nothing is done in the handler that asks for it";
  EXPECT_FALSE(first->HasBegun());
  bool isAsked = false;
  loop.onDoEvents = [&] {
    loop.Advance(50);
    if (!std::exchange(isAsked, true)) {
      EXPECT_TRUE(first->HasBegun());
      EXPECT_EQ(first->Elapsed(), 50);
      host::Job failing = waiting("b", 0);
      failing.Work = [] { throw basic::Error(5, "test", "no such table"); };
      queue.Start(failing);
      EXPECT_EQ(captions(), (Log{"a 50", "b"}));
      EXPECT_TRUE(posted.empty()) << "it waits for the one under way";
    }
  };
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "a done", "b failed: no such table"}));
  EXPECT_TRUE(first->HasEnded());
  EXPECT_EQ(first->Elapsed(), 200) << "and stays so";
  EXPECT_TRUE(queue.current().empty());
}

TEST_F(JobQueueTest, AJobIsCancelledWhetherItHasBegunOrNot) {
  const auto running = queue.Start(waiting("a", 10'000));
  const auto queued = queue.Start(waiting("b", 100));
  queue.Start(waiting("c", 100));
  loop.onDoEvents = [&] {
    loop.Advance(50);
    if (loop.Now() == 1000) {
      queued->Cancel();
      EXPECT_FALSE(queue.current()[0].isEnding);
      queue.cancel(queue.current()[0].id);
      EXPECT_TRUE(queue.current()[0].isEnding);
    }
  };
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "b cancelled: It was cancelled before it began.", "a cancelled: given up",
                      "begin c", "c done"}));
  running->Cancel();
  EXPECT_EQ(log.size(), 5U) << "what has ended cannot be cancelled";
}

TEST_F(JobQueueTest, WhatCannotBeEndedEarlyEndsAsItDoes) {
  host::Job job = waiting("a", 300, /*deadline=*/100);
  job.Cancel = nullptr;
  const auto running = queue.Start(job);
  EXPECT_TRUE(queue.current()[0].canCancel) << "it has not begun";
  loop.onDoEvents = [&] {
    loop.Advance(50);
    EXPECT_FALSE(queue.current()[0].canCancel);
    running->Cancel();
  };
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "a done"}));
}

TEST_F(JobQueueTest, ADeadlineCountsFromTheBeginningOfItsOwnJob) {
  queue.Start(waiting("a", 5000));
  queue.Start(waiting("b", 5000, /*deadline=*/2000));
  queue.Start(waiting("c", 1900, /*deadline=*/2000));
  host::Job deaf = waiting("d", 5000, /*deadline=*/100);
  int asked = 0;
  deaf.Cancel = [&asked, cancel = deaf.Cancel] {
    if (++asked == 3) cancel();
  };
  queue.Start(deaf);
  std::vector<std::int64_t> told;
  queue.onChange([&] {
    const auto all = queue.current();
    if (!all.empty() && all[0].caption == "b" && all[0].hasBegun) told.push_back(all[0].elapsed);
  });
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "a done", "begin b", "b timed out: given up", "begin c", "c done", "begin d",
                      "d timed out: given up"}));
  EXPECT_EQ(told, (std::vector<std::int64_t>{0, 1000, 2000, 2000}))
      << "when it begins, every second, at its end";
  EXPECT_EQ(asked, 3) << "asked again when that did not help";
}

TEST_F(JobQueueTest, AnEndThatThrowsStopsNoOtherJob) {
  host::Job job = waiting("a", 0);
  job.Done = [](const host::JobEnd&) { throw basic::Error(5, "test", "nobody listens"); };
  queue.Start(job);
  queue.Start(waiting("b", 0));
  EXPECT_THROW(runBottom(), basic::Error);
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "begin b", "b done"}));
}

TEST_F(JobQueueTest, AllAreCancelledWhenTheProgramEnds) {
  std::shared_ptr<host::RunningJob> left;
  queue.Start(waiting("a", 10'000));
  queue.Start(waiting("b", 100));
  loop.onDoEvents = [&] {
    loop.Advance(50);
    queue.cancelAll();
  };
  runBottom();
  EXPECT_EQ(log, (Log{"begin a", "b cancelled: It was cancelled before it began.", "a cancelled: given up"}));
  {
    JobQueue gone(loop, clock,
                  [this](std::function<void()> handler) { posted.push_back(std::move(handler)); });
    left = gone.Start(waiting("late", 0));
  }
  runBottom();
  left->Cancel();
  EXPECT_EQ(log.size(), 3U) << "what a queue that is gone had posted does nothing";
}

}  // namespace
}  // namespace platform
