#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "connections/clsConnection.h"
#include "host/jobs.h"
#include "host/services.h"

namespace LF2000 {

/// What a source gave when it was read once.
struct TrialResult {
  /// Why it could not be read; empty when it could.
  std::string Failure;
  std::vector<std::string> Columns;
  /// The first ones.
  std::vector<std::vector<std::string>> Rows;
  std::int64_t RowCount = 0;
  std::int64_t Milliseconds = 0;
  /// What an author should know of it, a sentence each.
  std::vector<std::string> Remarks;
};

/// Reads the source of a connection as a job, so that nobody waits: to test it, and to look what is in it.
/// The connection is a copy that belongs to the trial.
class ConnectionTrial : public std::enable_shared_from_this<ConnectionTrial> {
 public:
  /// In milliseconds, from the beginning of the job.
  static constexpr std::int32_t Deadline = 15000;
  static constexpr std::size_t MostRows = 100;

  explicit ConnectionTrial(std::shared_ptr<clsConnection> connection) : connection_(std::move(connection)) {}
  ~ConnectionTrial() = default;
  ConnectionTrial(const ConnectionTrial&) = delete;
  ConnectionTrial& operator=(const ConnectionTrial&) = delete;

  /// Done by the job before the source is read: it may look into it, change the connection, and throw.
  void Prepare(std::function<void(clsConnection&)> prepare) { prepare_ = std::move(prepare); }
  /// Hears every second how far it is.
  void Progress(std::function<void(const std::string&)> progress) { progress_ = std::move(progress); }
  /// Begins; `done` is called once, perhaps before this returns.
  void Start(std::function<void(const TrialResult&)> done);
  /// Ends it early; `done` hears of that at once.
  void Cancel();
  /// The same, and nobody hears.
  void Abandon();
  [[nodiscard]] bool IsRunning() const { return done_ != nullptr; }
  [[nodiscard]] const clsConnection& Connection() const { return *connection_; }

 private:
  void Read();
  void End(const host::JobEnd& end);
  void Finish(const TrialResult& result);
  void Tick();

  std::shared_ptr<clsConnection> connection_;
  std::function<void(clsConnection&)> prepare_;
  std::function<void(const std::string&)> progress_;
  std::function<void(const TrialResult&)> done_;
  std::shared_ptr<host::RunningJob> job_;
  std::unique_ptr<host::Timer> timer_;
  TrialResult result_;
};

/// "4 rows", "2 columns"
[[nodiscard]] std::string RowsText(const TrialResult& result);
[[nodiscard]] std::string ColumnsText(const TrialResult& result);

}  // namespace LF2000
