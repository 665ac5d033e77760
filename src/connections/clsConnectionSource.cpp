// How a connection opens its source, obtains its recordset, closes and reloads.

#include <cmath>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/ConnectionString.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Names.h"
#include "basic/Strings.h"
#include "connections/TextFileReader.h"
#include "connections/clsConnection.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

std::int32_t CodeFor(ConnectionKind kind, std::int32_t file, std::int32_t database, std::int32_t excel) {
  return kind == ConnectionKind::Database ? database : kind == ConnectionKind::Excel ? excel : file;
}

/// In a handler: raises the operation's error for a connection of that kind,
/// around the description of the error being handled.
[[noreturn]] void RaiseFor(ConnectionKind kind, const std::string& description, std::int32_t fileCode,
                           std::int32_t databaseCode, std::int32_t excelCode) {
  modErrors::SetLastError();
  const std::string underlying = modErrors::LastError.Description;
  modErrors::RaiseError(CodeFor(kind, fileCode, databaseCode, excelCode), description, underlying);
}

}  // namespace

std::string clsConnection::Base() const { return modGlobalFunctions::BaseOf(activePresentationName_); }

std::string clsConnection::ResolvedFile() const {
  return modGlobalFunctions::ResolvePath(connectionFileString_, Base());
}

void clsConnection::HoldSample(host::TextTable rows) {
  auto recordset = host::Current().ado->CreateRecordset();
  recordset->Open(std::move(rows));
  recordset_ = std::move(recordset);
  isSample_ = true;
  dataOpen_ = true;
  NoteReading();
}

void clsConnection::OpenConnection() try {
  dataOpen_ = false;
  isCurrent_ = false;
  preview_ = DataPreview::AsTheyAre;
  previewed_.reset();
  switch (Kind()) {
    case ConnectionKind::TextFile:
      OpenTextFile();
      break;
    case ConnectionKind::Database:
      OpenDatabase();
      break;
    case ConnectionKind::Excel:
      if (!OpenWorkbook()) return;
      break;
  }
  dataOpen_ = true;
  Log(DebugKind::Information, "Connection opened");
} catch (...) {
  RaiseFor(Kind(), connectionDescription_, modErrors::OpeningFile, modErrors::OpeningDatabase,
           modErrors::OpeningExcelFile);
}

void clsConnection::OpenDatabase() {
  const std::string resolved = modGlobalFunctions::ResolveConnectionString(connectionString_, Base());
  Log(DebugKind::Information, "Open database connection " + basic::MaskedConnectionString(resolved));
  CloseConnection();
  // Opening lets the loop run, which may close it.
  const auto opening = host::Current().ado->CreateConnection();
  connection_ = opening;
  const auto requireStillOpening = [&] {
    if (connection_ == opening) return;
    throw basic::Error(basic::AdapterError, basic::DefaultSource, "It was closed while it was being opened.");
  };
  opening->ConnectionString(resolved);
  opening->Open("", "", ADODB::adOptionUnspecified);
  requireStillOpening();
  while (opening->State() != ADODB::adStateOpen) {
    Wait();
    requireStillOpening();
  }
}

namespace {

/// Three silent attempts, for a file that another program holds for a moment,
/// and a last one whose failure counts.
template <typename Attempt>
void TryUpToFourTimes(Attempt&& attempt) {
  constexpr int SilentAttempts = 3;
  for (int i = 0; i < SilentAttempts; ++i) {
    bool succeeded = false;
    modGlobalFunctions::IgnoreErrors([&] {
      attempt();
      succeeded = true;
    });
    if (succeeded) return;
  }
  attempt();
}

}  // namespace

void clsConnection::OpenTextFile() {
  const std::string path = ResolvedFile();
  Log(DebugKind::Information, "Open text connection " + path);
  TryUpToFourTimes([&] { OpenTextFileOnce(path); });
}

void clsConnection::OpenTextFileOnce(const std::string& path) {
  CloseFile();
  host::Files& files = *host::Current().files;
  file_ = files.OpenForInput(path);
  lastFileDate_ = files.FileDateTime(path);
}

bool clsConnection::OpenWorkbook() {
  using modGlobalFunctions::ExcelState;
  const std::string path = ResolvedFile();
  Log(DebugKind::Information, "Open excel connection " + path);
  const ExcelState first = modGlobalFunctions::ExcelStatus(true, false);
  const ExcelState second = modGlobalFunctions::ExcelStatus(true, false);
  if (second != ExcelState::Started && first != ExcelState::NotRunning) return false;
  if (!modGlobalFunctions::SystemExcel) {
    throw basic::Error(basic::AdapterError, basic::DefaultSource,
                       "What reads workbooks could not be started.");
  }
  TryUpToFourTimes([&] { OpenWorkbookOnce(path); });
  return true;
}

void clsConnection::OpenWorkbookOnce(const std::string& path) {
  constexpr std::int32_t UpdateExternalLinks = 3;
  CloseExcel();
  lastFileDate_ = host::Current().files->FileDateTime(path);
  // Opening lets the loop run, which may let go of Excel.
  const std::shared_ptr<Excel::Application> excel = modGlobalFunctions::SystemExcel;
  if (!excel) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
  workbook_ = excel->Workbooks()->Open(path, UpdateExternalLinks, true);
  const auto sheets = workbook_->Sheets();
  worksheet_ = connectionSheet_.empty() ? sheets->Item(1) : sheets->Item(std::string_view(connectionSheet_));
}

void clsConnection::OpenRecordset() try {
  Log(DebugKind::Information, "OpenRecordset");
  switch (Kind()) {
    case ConnectionKind::TextFile:
      OpenDataFile();
      break;
    case ConnectionKind::Database:
      OpenDatabaseRecordset();
      break;
    case ConnectionKind::Excel:
      OpenExcelFile();
      break;
  }
} catch (...) {
  dataOpen_ = false;
  if (IsFile()) throw;
  modErrors::SetLastError();
  modErrors::RaiseError(modErrors::ReadingDatabase, connectionDescription_,
                        std::string(modErrors::LastError.Description));
}

void clsConnection::OpenDataFile() try {
  Log(DebugKind::Information, "OpenDataFile");
  if (!file_) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
  // Reading may let the loop run, which may open the file anew.
  const std::shared_ptr<host::InputFile> file = file_;
  host::Bytes bytes = file->ReadAll();
  remarks_.clear();
  host::TextTable table =
      ReadTextFile(std::move(bytes), connectionFirstRowFieldNames_, [this](std::string_view remark) {
        remarks_.emplace_back(remark);
        Log(DebugKind::Information, "OpenDataFile:" + remarks_.back());
      });
  auto recordset = host::Current().ado->CreateRecordset();
  recordset->Open(std::move(table));
  recordset_ = std::move(recordset);
  NoteReading();
} catch (...) {
  modErrors::SetLastError();
  modErrors::RaiseError(modErrors::ReadingFile, connectionDescription_,
                        std::string(modErrors::LastError.Description));
}

namespace {

bool IsStatement(std::string_view sql) {
  return basic::StartsWith(basic::UCase(basic::Trim(sql)), "SELECT ");
}

bool IsProjectProvider(std::string_view connectionString) {
  return connectionString.find("Microsoft.Project.OLEDB.") != std::string_view::npos;
}

}  // namespace

void clsConnection::OpenDatabaseRecordset() {
  if (!connection_ || connection_->State() != ADODB::adStateOpen) return;
  CloseRecordset();
  const auto recordset = host::Current().ado->CreateRecordset();
  recordset_ = recordset;
  recordset->CursorLocation(ADODB::adUseClient);
  recordset->CursorType(ADODB::adOpenForwardOnly);
  recordset->LockType(ADODB::adLockReadOnly);
  recordset->ActiveConnection(connection_);
  std::int32_t options = ADODB::adOptionUnspecified;
  if (!IsProjectProvider(connection_->ConnectionString())) {
    options = IsStatement(recordsetSQL_) ? ADODB::adAsyncExecute : ADODB::adCmdTableDirect;
  }
  recordset->Open(recordsetSQL_, ADODB::adOpenUnspecified, ADODB::adLockUnspecified, options);
  RequireStillHeld(recordset);
  while (recordset->State() != ADODB::adStateOpen) {
    Wait();
    RequireStillHeld(recordset);
  }
  recordset->ActiveConnection(nullptr);
  NoteReading();
}

void clsConnection::Wait() {
  host::Current().loop->DoEvents();
  if (!std::exchange(isCancelled_, false)) return;
  throw basic::Error(basic::AdapterError, basic::DefaultSource, "It was given up before an answer came.");
}

void clsConnection::Cancel() { isCancelled_ = true; }

void clsConnection::RequireStillHeld(const std::shared_ptr<ADODB::Recordset>& recordset) const {
  if (recordset_ == recordset) return;
  throw basic::Error(basic::AdapterError, basic::DefaultSource, "It was closed while it was being read.");
}

void clsConnection::CloseFile() {
  Log(DebugKind::Information, "CloseFile");
  file_.reset();
}

void clsConnection::CloseConnection() {
  Log(DebugKind::Information, "CloseConnection");
  modGlobalFunctions::IgnoreErrors([&] {
    if (connection_ && connection_->State() == ADODB::adStateOpen) connection_->Close();
  });
  connection_.reset();
}

void clsConnection::CloseRecordset() {
  Log(DebugKind::Information, "CloseRecordset");
  // A recordset whose fetching failed says so at every question; it is let go all the same.
  modGlobalFunctions::IgnoreErrors([&] {
    if (recordset_ && recordset_->State() != ADODB::adStateClosed) recordset_->Close();
  });
  recordset_.reset();
}

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
