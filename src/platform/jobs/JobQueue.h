#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/jobs.h"
#include "host/services.h"

namespace platform {

/// What is being waited for, one thing after the other, in the order in which it was asked for.
class JobQueue final : public host::Jobs {
 public:
  /// Runs a handler soon, when no other is on the stack (EventLoop::postOutermost).
  using Bottom = std::function<void(std::function<void()> handler)>;

  /// How often deadlines are looked at, in milliseconds.
  static constexpr std::int32_t Beat = 100;

  JobQueue(host::Loop& loop, host::Clock& clock, Bottom bottom);
  /// Forgets what waits and tells nobody. No job may be under way.
  ~JobQueue() override;
  JobQueue(const JobQueue&) = delete;
  JobQueue& operator=(const JobQueue&) = delete;

  std::shared_ptr<host::RunningJob> Start(host::Job job) override;

  /// A job for those who show what is going on.
  struct View {
    /// Stays a job's own for as long as the queue lives.
    std::uint64_t id = 0;
    std::string caption;
    bool hasBegun = false;
    /// Milliseconds since it began, and how many it may take: 0 for any number.
    std::int64_t elapsed = 0;
    std::int32_t deadline = 0;
    bool canCancel = false;
    /// It was asked to end early and has not ended yet.
    bool isEnding = false;
    /// Of the one under way, where others were asked for with it: how many of them are done, and how many
    /// there are, itself included. Else 0.
    std::uint64_t step = 0;
    std::uint64_t maximum = 0;
  };
  /// The one under way, then those that wait.
  [[nodiscard]] std::vector<View> current() const;
  /// Cancels the job; nothing when it has ended.
  void cancel(std::uint64_t id);
  /// Cancels all of them, so that the program may end.
  void cancelAll();
  /// Hears when a job comes, begins, is asked to end and has ended, and every second of the one under way.
  /// Must not throw; an empty one ends that.
  void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  class Entry;

  void post();
  void workOff();
  void beat();
  void cancel(Entry& entry, host::JobEnd::Kind why);
  void tell() const {
    if (changed_) changed_();
  }

  host::Clock& clock_;
  Bottom bottom_;
  std::function<void()> changed_;
  std::deque<std::shared_ptr<Entry>> waiting_;
  std::shared_ptr<Entry> running_;
  std::unique_ptr<host::Timer> beat_;
  std::int64_t toldSecond_ = 0;
  std::uint64_t lastId_ = 0;
  /// Since nothing waited last.
  std::uint64_t done_ = 0;
  bool isPosted_ = false;
  /// What was posted may come when the queue is gone.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace platform
