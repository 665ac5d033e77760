// How a connection opens its source, obtains its recordset and closes.

#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Names.h"
#include "basic/Strings.h"
#include "connections/SourceErrors.h"
#include "connections/TextFileReader.h"
#include "connections/clsConnection.h"

namespace LF2000 {

using modDebug::DebugKind;

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

}  // namespace LF2000
