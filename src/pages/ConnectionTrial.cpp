// A source is read once, in the background, within 15 seconds.

#include "pages/ConnectionTrial.h"

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modJobs.h"
#include "basic/Counted.h"

namespace LF2000 {

namespace {

constexpr std::int64_t Second = 1000;

std::string Minutes(std::int64_t milliseconds) {
  const std::int64_t seconds = milliseconds / Second;
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + (rest.size() == 1 ? ":0" : ":") + rest;
}

bool IsDatabase(const clsConnection& connection) {
  return connection.ConnectionType() == static_cast<std::int32_t>(ConnectionKind::Database);
}

}  // namespace

std::string RowsText(const TrialResult& result) { return basic::Counted(result.RowCount, "row"); }

std::string ColumnsText(const TrialResult& result) { return basic::Counted(result.Columns.size(), "column"); }

void ConnectionTrial::Abandon() {
  const auto self = shared_from_this();
  done_ = nullptr;
  timer_.reset();
  if (job_) job_->Cancel();
}

void ConnectionTrial::Start(std::function<void(const TrialResult&)> done) {
  done_ = std::move(done);
  const std::weak_ptr<ConnectionTrial> weak = weak_from_this();
  const std::string what = connection_->ConnectionDescription();
  host::Job job;
  job.Caption = IsDatabase(*connection_) ? "Testing connection " + what : "Reading " + what;
  job.Work = [weak] {
    // Held while it waits; it may be let go of meanwhile.
    if (const auto trial = weak.lock()) trial->Read();
  };
  job.Cancel = [connection = connection_] { connection->Cancel(); };
  job.Deadline = Deadline;
  job.Done = [weak](const host::JobEnd& end) {
    if (const auto trial = weak.lock()) trial->End(end);
  };
  job_ = modJobs::Start(std::move(job));
  if (!done_) return;
  timer_ = host::Current().loop->CreateTimer([weak] {
    if (const auto trial = weak.lock()) trial->Tick();
  });
  timer_->Interval(static_cast<std::int32_t>(Second));
  timer_->Enabled(true);
}

void ConnectionTrial::Cancel() {
  const auto self = shared_from_this();
  if (job_) job_->Cancel();
  if (done_) Finish({"Cancelled.", {}, {}, 0, 0, {}});
}

void ConnectionTrial::Tick() {
  if (!done_ || !progress_ || !job_) return;
  if (!job_->HasBegun()) return progress_("Waiting for what is being read before it\u2026");
  const std::string& name = connection_->ConnectionDescription();
  const std::string what = name.empty() ? "the source" : name;
  progress_((IsDatabase(*connection_) ? "Connecting to " : "Reading ") + what + "\u2026 " +
            Minutes(job_->Elapsed()) + ", gives up at " + Minutes(Deadline));
}

void ConnectionTrial::Read() {
  // This object may be let go of while the loop runs.
  const auto connection = connection_;
  const auto self = shared_from_this();
  const std::int64_t start = host::Current().clock->TickCount();
  if (prepare_) prepare_(*connection);
  connection->OpenConnection();
  connection->OpenRecordset();
  connection->CloseConnection();
  if (!connection->RecordsetReady()) {
    result_.Failure = "There is nothing on this computer that can read it.";
    return;
  }
  result_.Milliseconds = host::Current().clock->TickCount() - start;
  result_.Columns = connection->Columns();
  result_.Columns.erase(result_.Columns.begin());
  result_.RowCount = static_cast<std::int64_t>(connection->RecordCount());
  result_.Remarks = connection->Remarks();
  const auto shown = std::min(result_.RowCount, static_cast<std::int64_t>(MostRows));
  for (std::int64_t row = 1; row <= shown; ++row) {
    auto& cells = result_.Rows.emplace_back();
    for (const std::string& column : result_.Columns) {
      bool noValue = false;
      cells.push_back(connection->GetValueDatabase(static_cast<double>(row), column, 1, false, noValue));
    }
  }
}

void ConnectionTrial::End(const host::JobEnd& end) {
  if (!done_) return;
  switch (end.How) {
    case host::JobEnd::Kind::Done: {
      // Its own: whoever hears of it may let go of the trial.
      const TrialResult result = std::move(result_);
      return Finish(result);
    }
    case host::JobEnd::Kind::Failed:
      return Finish({modErrors::ForEverybody(end.Description), {}, {}, 0, 0, {}});
    case host::JobEnd::Kind::Cancelled:
      return Finish({"Cancelled.", {}, {}, 0, 0, {}});
    case host::JobEnd::Kind::TimedOut:
      return Finish({"There was no answer within 15 seconds.", {}, {}, 0, 0, {}});
  }
}

void ConnectionTrial::Finish(const TrialResult& result) {
  timer_.reset();
  const auto done = std::exchange(done_, nullptr);
  done(result);
}

}  // namespace LF2000
