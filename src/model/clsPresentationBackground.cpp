// How a presentation's connections are opened and read anew by jobs, and taken up when its tags have changed.

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Date.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/modCommandState.h"
#include "model/modTags.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

bool IsDatabase(const clsConnection& connection) {
  return connection.ConnectionType() == static_cast<std::int32_t>(ConnectionKind::Database);
}

/// Zero for what is no file, and for one that is not there.
basic::Date FileDate(const clsConnection& connection) {
  basic::Date date;
  modGlobalFunctions::IgnoreErrors([&] {
    const std::string path = connection.ResolvedFile();
    if (!path.empty()) date = host::Current().files->FileDateTime(path);
  });
  return date;
}

void OpenOnce(clsConnection& connection) {
  try {
    connection.OpenConnection();
    connection.OpenRecordset();
  } catch (...) {
    // What is half open would keep the next reading from beginning anew.
    connection.CloseRecordset();
    connection.CloseConnection();
    throw;
  }
  connection.CloseConnection();
}

using ConnectionList = clsPresentation::ConnectionList;

/// Puts those of `former` that are described alike in the place of the described ones. Answers the others.
ConnectionList KeepAlike(ConnectionList& described, const ConnectionList& former) {
  ConnectionList others;
  for (auto& connection : described) {
    const auto same = std::find_if(former.begin(), former.end(), [&](const auto& each) {
      return each->ConnectionTagNumber() == connection->ConnectionTagNumber() &&
             each->TagString() == connection->TagString();
    });
    if (same == former.end()) {
      others.push_back(connection);
    } else {
      connection = *same;
    }
  }
  return others;
}

/// What is stored nowhere is taken along.
void KeepSample(ConnectionList& described, const ConnectionList& former) {
  const auto sample = std::find_if(former.begin(), former.end(),
                                   [](const auto& connection) { return connection->IsSample(); });
  if (sample == former.end()) return;
  const bool isTaken = std::any_of(described.begin(), described.end(), [&](const auto& connection) {
    return connection->ConnectionTagNumber() == (*sample)->ConnectionTagNumber();
  });
  if (!isTaken) described.insert(described.begin(), *sample);
}

}  // namespace

clsPresentation::~clsPresentation() {
  modGlobalFunctions::IgnoreErrors([this] { DropReadings(); });
}

void clsPresentation::OpenAllInBackground(ConnectionList connections) {
  // Files answer at once; whoever waits for a server waits behind them.
  std::stable_partition(connections.begin(), connections.end(),
                        [](const auto& connection) { return !IsDatabase(*connection); });
  for (const auto& connection : connections) OpenInBackground(connection);
}

void clsPresentation::OpenInBackground(const std::shared_ptr<clsConnection>& connection, Opened opened) try {
  GiveUpReading(*connection);
  StartReading(
      connection, {"Opening connection %s", modErrors::OpeningPresentation, true},
      [connection] { OpenOnce(*connection); }, std::move(opened));
} catch (...) {
  modErrors::CatchError(modErrors::OpeningPresentation);
}

void clsPresentation::RequeryInBackground(bool forced) try {
  const ConnectionList connections = connections_;
  for (const auto& connection : connections) {
    if (ReadingJob(*connection) || !(forced || IsDue(*connection))) continue;
    StartReading(
        connection, {"Reading connection %s", modErrors::RequeryingData, forced},
        // While a presentation is edited only what is forced asks a database.
        [connection, forced] { static_cast<void>(connection->Requery(forced || IsDatabase(*connection))); },
        {});
  }
} catch (...) {
  modErrors::CatchError(modErrors::RequeryingData);
}

bool clsPresentation::IsDue(const clsConnection& connection) const {
  if (connection.IsSample()) return false;
  const auto found = readings_.find(&connection);
  const Reading reading = found == readings_.end() ? Reading() : found->second;
  const auto passed = static_cast<double>(host::Current().clock->TickCount() - reading.Ended);
  if (connection.Readings().IsFailing && passed >= RetryInterval) return true;
  if (!IsDatabase(connection)) return FileDate(connection) != reading.FileDate;
  return !connection.Readings().IsFailing &&
         passed >= std::max<double>(DatabaseInterval, connection.RecordsetRefreshRate());
}

void clsPresentation::StartReading(const std::shared_ptr<clsConnection>& connection, const ReadingKind& kind,
                                   std::function<void()> work, Opened ended) {
  const auto date = std::make_shared<basic::Date>();
  const std::uint64_t number = ++lastReading_;
  readings_[connection.get()].Number = number;
  host::Job job;
  job.Caption = basic::Replace(kind.Caption, "%s", connection->ConnectionDescription());
  job.Work = [connection, date, work = std::move(work)] {
    *date = FileDate(*connection);
    work();
  };
  job.Cancel = [connection] { connection->Cancel(); };
  job.Done = [presentation = std::weak_ptr(shared_from_this()), connection, number, kind, date,
              before = connection->DataVersion(), ended = std::move(ended)](const host::JobEnd& end) {
    const auto self = presentation.lock();
    if (!self || !self->NoteReadingEnd(*connection, number, *date)) return;
    self->TakeReading(*connection, before, kind, end);
    if (ended) ended(end);
  };
  const auto running = modJobs::Start(std::move(job));
  if (!running->HasEnded()) readings_[connection.get()].Job = running;
}

bool clsPresentation::NoteReadingEnd(const clsConnection& connection, std::uint64_t number,
                                     basic::Date fileDate) {
  const auto found = readings_.find(&connection);
  if (found == readings_.end() || found->second.Number != number) return false;
  found->second.Job.reset();
  found->second.Ended = host::Current().clock->TickCount();
  found->second.FileDate = fileDate;
  return true;
}

void clsPresentation::TakeReading(clsConnection& connection, std::int64_t versionBefore,
                                  const ReadingKind& kind, const host::JobEnd& end) {
  using Kind = host::JobEnd::Kind;
  if (end.How != Kind::Done) {
    const bool isNews = kind.IsAsked || !connection.Readings().IsFailing;
    connection.NoteFailure(end.Description);
    if (isNews && end.How != Kind::Cancelled) {
      modErrors::LastError = {static_cast<double>(end.Number), end.Source, end.Description};
      modErrors::ReportError(kind.ErrorCode);
    }
  } else if (connection.DataVersion() != versionBefore && !isShown_) {
    const std::string& number = connection.ConnectionTagNumber();
    std::erase_if(toldColumns_, [&](const auto& told) { return kind.IsAsked && told.first == number; });
    FillConnection(number);
  }
  modCommandState::TellChanged();
}

std::shared_ptr<host::RunningJob> clsPresentation::ReadingJob(const clsConnection& connection) const {
  const auto found = readings_.find(&connection);
  return found == readings_.end() ? nullptr : found->second.Job;
}

void clsPresentation::GiveUpReading(const clsConnection& connection) {
  const auto found = readings_.find(&connection);
  if (found == readings_.end()) return;
  const Reading reading = std::move(found->second);
  readings_.erase(found);
  if (reading.Job) reading.Job->Cancel();
}

void clsPresentation::DropReadings() {
  const auto readings = std::exchange(readings_, {});
  for (const auto& entry : readings) {
    if (entry.second.Job) entry.second.Job->Cancel();
  }
}

void clsPresentation::LoadInBackground(const clsPresentation* former) {
  connections_ = DescribedConnections();
  LoadSettings();
  ConnectionList others = connections_;
  if (former != nullptr) {
    ConnectionList settled = former->connections_;
    std::erase_if(settled,
                  [&](const auto& connection) { return former->ReadingJob(*connection) != nullptr; });
    others = KeepAlike(connections_, settled);
    KeepSample(connections_, former->connections_);
    TakeOverReadings(*former);
    if (displayTypeTag_ == former->displayTypeTag_) DisplayType(former->displayType_);
  }
  RequireDisplayType();
  Log(DebugKind::Event, "Start fill values");
  FillValues(false);
  Log(DebugKind::Event, "End fill values");
  OpenAllInBackground(std::move(others));
}

void clsPresentation::TakeOverReadings(const clsPresentation& former) {
  for (const auto& connection : connections_) {
    const auto found = former.readings_.find(connection.get());
    if (found != former.readings_.end()) readings_[connection.get()] = found->second;
  }
}

clsPresentation::ConnectionList clsPresentation::DescribedConnections() const {
  ConnectionList described;
  bool isTold = false;
  modTags::ForEachTag(*presentation_->Tags(), modTags::Connection,
                      [&](const std::string& number, const std::string& value) {
                        try {
                          described.push_back(DescribedConnection(number, value));
                        } catch (...) {
                          modErrors::SetLastError();
                          if (!std::exchange(isTold, true))
                            modErrors::ReportError(modErrors::OpeningPresentation);
                        }
                      });
  return described;
}

void clsPresentation::TakeUpTags() try {
  const bool isLinked = modTags::HasVersionTag(*presentation_);
  ConnectionList present = isLinked ? DescribedConnections() : ConnectionList();
  ConnectionList others = KeepAlike(present, connections_);
  KeepSample(present, connections_);
  const ConnectionList former = std::exchange(connections_, std::move(present));
  for (const auto& connection : former) {
    if (std::find(connections_.begin(), connections_.end(), connection) == connections_.end()) {
      GiveUpReading(*connection);
    }
  }
  audience_ = {};
  if (isLinked) audience_ = modDistributionTags::Read(*presentation_->Tags());
  if (isLinked && DisplayTypeTag() != displayTypeTag_) LoadDisplayType();
  if (isLinked) RequireDisplayType();
  OpenAllInBackground(std::move(others));
  modCommandState::TellChanged();
} catch (...) {
  modErrors::CatchError(modErrors::OpeningPresentation);
}

}  // namespace LF2000
