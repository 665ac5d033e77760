#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace host {

/// How a job ended.
struct JobEnd {
  enum class Kind : std::uint8_t { Done, Failed, Cancelled, TimedOut };
  Kind How = Kind::Done;
  /// Of one that failed or was ended early: the work's own error, as basic::Error has it.
  std::int32_t Number = 0;
  std::string Source;
  std::string Description;
};

/// Work that may wait for others: for a database, for a disk elsewhere.
struct Job {
  /// What is being done, for people: "Opening connection Stock".
  std::string Caption;
  /// Does it. It may let the loop run while it waits (Loop::DoEvents), and throws when it fails.
  std::function<void()> Work;
  /// Makes the work end early, by an error; called from the loop while it waits, and again when that did not
  /// help. Null where it cannot be ended.
  std::function<void()> Cancel;
  /// Milliseconds after which it is cancelled; 0: it is waited for as long as it takes.
  std::int32_t Deadline = 0;
  /// How it ended; null when nobody is to hear.
  std::function<void(const JobEnd&)> Done;
};

/// Does the job's work here and now: Done, or Failed with what it threw.
[[nodiscard]] JobEnd DoWork(const Job& job);

/// A job that waits its turn or is under way.
class RunningJob {
 public:
  virtual ~RunningJob() = default;
  /// Ends it early, or takes it out of the queue; Done hears of that. Nothing once it has ended.
  virtual void Cancel() = 0;
  [[nodiscard]] virtual bool HasBegun() const = 0;
  [[nodiscard]] virtual bool HasEnded() const = 0;
  /// Milliseconds since it began; 0 before.
  [[nodiscard]] virtual std::int64_t Elapsed() const = 0;
};

/// Does jobs one after the other, each from the bottom of the loop: never two waits lie on each other.
/// Handlers that run meanwhile may look and change, and start further jobs.
class Jobs {
 public:
  virtual ~Jobs() = default;
  /// Returns at once.
  virtual std::shared_ptr<RunningJob> Start(Job job) = 0;
};

}  // namespace host
