#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "ado/Providers.h"
#include "ado/Query.h"
#include "basic/Error.h"

namespace ado {

/// Counts workers that were told to end and are not done yet.
class EndingWorkers {
 public:
  void add();
  void remove();
  /// Waits until there is none, at most that long.
  void waitFor(std::chrono::milliseconds longest);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int count_ = 0;
};

/// A connection and the thread that opens it, reads by it and closes it again.
/// All members are called on the loop, and none blocks: the thread owns what it
/// uses and goes on alone after end(), until the driver lets it go.
class Session {
 public:
  enum class State { Connecting, Open, Failed, Ended };

  [[nodiscard]] static std::shared_ptr<Session> start(Target target, std::shared_ptr<EndingWorkers> ending);

  /// Connecting longer than the target's time-out becomes a failure here.
  [[nodiscard]] State state();
  /// Why it failed.
  [[nodiscard]] basic::Error failure() const;
  [[nodiscard]] std::chrono::seconds commandTimeout() const { return commandTimeout_; }

  /// Reads the source after those before it. The session must be open.
  [[nodiscard]] std::shared_ptr<Query> read(Source source);
  /// Breaks off what is being read and closes the connection.
  void end();

 private:
  struct Shared;
  static void work(const std::shared_ptr<Shared>& shared, const Target& target);

  std::shared_ptr<Shared> shared_;
  std::string shown_;
  std::chrono::seconds connectTimeout_{0};
  std::chrono::seconds commandTimeout_{0};
  std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
};

}  // namespace ado
