// When a connection reads its source again, and what it notes of that.

#include <cmath>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Names.h"
#include "connections/SourceErrors.h"
#include "connections/clsConnection.h"

namespace LF2000 {

using modDebug::DebugKind;

bool clsConnection::Requery(bool forced) try {
  if (modDebug::DebugOn) {
    Log(DebugKind::Information, "Requery " + connectionTagNumber_);
    Log(DebugKind::Variable, "Forced:" + basic::CStr(forced));
  }
  const DataPreview preview = preview_;
  Preview(DataPreview::AsTheyAre);
  try {
    const bool isCurrent = RequeryData(forced);
    Preview(preview);
    return isCurrent;
  } catch (...) {
    Preview(preview);
    throw;
  }
} catch (...) {
  RaiseFor(Kind(), connectionDescription_, modErrors::RequeryingFile, modErrors::RequeryingDatabase,
           modErrors::RequeryingExcelFile);
}

bool clsConnection::RequeryData(bool forced) {
  if (isSample_) return true;
  const std::int64_t before = dataVersion_;
  const bool isCurrent =
      Kind() == ConnectionKind::Database ? RequeryDatabase(forced) : IsFile() && RequeryFile(forced);
  if (dataVersion_ != before) RequireUsedColumns();
  return isCurrent;
}

void clsConnection::ReadBy(std::shared_ptr<clsConnection> reader, std::function<bool()> isReading) {
  reader_ = std::move(reader);
  isReading_ = std::move(isReading);
}

bool clsConnection::TakeReading() {
  if (!reader_ || isReading_()) return false;
  const auto reader = std::exchange(reader_, nullptr);
  isReading_ = {};
  if (!reader->RecordsetReady()) {
    NoteFailure(reader->Readings().LastError);
    return false;
  }
  recordset_ = reader->recordset_;
  dataOpen_ = true;
  lastRequeryTime_ = host::Current().clock->Timer();
  NoteReading();
  return true;
}

bool clsConnection::RequeryDatabase(bool forced) {
  if (reader_ && isReading_()) return false;
  if (TakeReading()) return true;
  bool asked = forced;
  if (!designMode_) {
    const float now = host::Current().clock->Timer();
    const float elapsed = std::fabs(now - lastRequeryTime_) * 1000.0F;
    if (static_cast<float>(recordsetRefreshRate_) < elapsed) {
      lastRequeryTime_ = now;
      ReloadDatabase();
      asked = true;
    }
  }
  if (forced) {
    lastRequeryTime_ = host::Current().clock->Timer();
    ReloadDatabase();
  }
  return asked;
}

void clsConnection::ReloadDatabase() {
  lastRequeryTime_ = host::Current().clock->Timer();
  OpenConnection();
  try {
    FetchAgain();
  } catch (...) {
    // Whoever asks next opens it anew; until then no server is held up.
    modGlobalFunctions::IgnoreErrors([&] {
      if (recordset_) recordset_->ActiveConnection(nullptr);
    });
    CloseConnection();
    throw;
  }
  CloseConnection();
}

void clsConnection::FetchAgain() {
  if (!recordset_) {
    // The first opening failed; there is nothing to requery yet.
    OpenRecordset();
    return;
  }
  const std::shared_ptr<ADODB::Recordset> recordset = recordset_;
  recordset->ActiveConnection(connection_);
  recordset->Requery(ADODB::adOptionUnspecified);
  RequireStillHeld(recordset);
  while (recordset->State() == ADODB::adStateFetching) {
    Wait();
    RequireStillHeld(recordset);
  }
  recordset->ActiveConnection(nullptr);
  NoteReading();
}

bool clsConnection::RequeryFile(bool forced) {
  const basic::Date fileDate = host::Current().files->FileDateTime(ResolvedFile());
  // A file that could not be opened is tried again even when it comes back unchanged.
  if (fileDate == lastFileDate_ && dataOpen_ && !forced) {
    if (isCurrent_) NoteDelivery();
    return isCurrent_;
  }
  OpenConnection();
  if (Kind() == ConnectionKind::Excel) {
    OpenExcelFile();
  } else {
    OpenDataFile();
  }
  lastFileDate_ = fileDate;
  return isCurrent_;
}

void clsConnection::NoteReading() {
  ++dataVersion_;
  missingColumns_.clear();
  const std::vector<std::string> columns = usedColumns_.empty() ? usedColumns_ : Columns();
  for (const std::string& used : usedColumns_) {
    if (!basic::HasName(columns, used)) missingColumns_.push_back(used);
  }
  isCurrent_ = missingColumns_.empty();
  if (isCurrent_) NoteDelivery();
}

void clsConnection::NoteDelivery() {
  ++readings_.Deliveries;
  readings_.LastDelivery = host::Current().clock->Now();
  readings_.IsFailing = false;
}

void clsConnection::RequireUsedColumns() const {
  if (missingColumns_.empty()) return;
  std::string names;
  for (const std::string& column : missingColumns_) {
    names += (names.empty() ? "'" : ", '") + column + "'";
  }
  modErrors::RaiseError(
      CodeFor(Kind(), modErrors::ReadingFile, modErrors::ReadingDatabase, modErrors::ReadingExcelFile),
      connectionDescription_,
      "The data have no " + std::string(missingColumns_.size() == 1 ? "column " : "columns ") + names +
          ", which the show uses.");
}

void clsConnection::NoteFailure(std::string_view description) {
  ++readings_.Failures;
  readings_.IsFailing = true;
  readings_.LastError = modErrors::ForEverybody(description);
}

}  // namespace LF2000
