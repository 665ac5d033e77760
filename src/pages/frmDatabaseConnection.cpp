// The dialog of databases: its controls, and what is stored of them.

#include "pages/frmDatabaseConnection.h"

#include <cmath>
#include <utility>

#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/SourceKind.h"

namespace LF2000 {

namespace {

constexpr const char* DefaultRefreshRate = "1000";
/// Some eleven days.
constexpr std::int64_t LongestRefreshRate = 1'000'000'000;

/// Nothing for what is no number of milliseconds.
std::optional<double> RefreshRateOf(const std::string& text) {
  try {
    const double rate = basic::CDbl(text);
    const bool isTime = std::isfinite(rate) && rate >= 0 && rate <= static_cast<double>(LongestRefreshRate);
    return isTime ? std::optional(rate) : std::nullopt;
  } catch (const basic::Error&) {
    return std::nullopt;
  }
}

}  // namespace

frmDatabaseConnection::frmDatabaseConnection(const std::shared_ptr<clsPresentation>& presentation,
                                             const std::shared_ptr<clsConnection>& edited,
                                             std::string_view path, Stored stored)
    : frmConnection("frmDatabaseConnection", "Database", presentation, edited, std::move(stored)),
      cmbProvider_(Add<Forms::ComboBox>("cmbProvider")),
      txtServer_(Add<Forms::TextBox>("txtServer")),
      txtPort_(Add<Forms::TextBox>("txtPort")),
      txtDatabase_(Add<Forms::TextBox>("txtDatabase")),
      cmdBrowse_(Add<Forms::CommandButton>("cmdBrowse", "&Browse\u2026")),
      txtUser_(Add<Forms::TextBox>("txtUser")),
      txtPassword_(Add<Forms::TextBox>("txtPassword")),
      cmdReplacePassword_(Add<Forms::CommandButton>("cmdReplacePassword", "Re&place")),
      cmdRemovePassword_(Add<Forms::CommandButton>("cmdRemovePassword", "Re&move")),
      txtConnectionString_(Add<Forms::TextBox>("txtConnectionString", 2)),
      cmbTable_(Add<Forms::ComboBox>("cmbTable")),
      txtSQL_(Add<Forms::TextBox>("txtSQL", 4)),
      lblColumns_(Add<Forms::Label>("lblColumns")),
      txtRefreshRate_(Add<Forms::TextBox>("txtRefreshRate")),
      udRefreshRate_(Add<Forms::UpDown>("udRefreshRate", txtRefreshRate_, 0, LongestRefreshRate)) {
  AddControls();
  FillProviders();
  txtRefreshRate_.Text(DefaultRefreshRate);
  if (edited) {
    stored_ = StoredPassword(edited->ConnectionString());
    txtSQL_.Text(edited->RecordsetSQL());
    txtRefreshRate_.Text(basic::CStr(edited->RecordsetRefreshRate()));
  } else if (!path.empty()) {
    stored_ = StoredPassword(DatabaseString(path));
    SuggestFileDescription(path);
  }
  if (stored_.IsSet()) password_ = Password::Stored;
  txtConnectionString_.Text(stored_.Shown());
  if (stored_.IsWithheld()) {
    txtConnectionString_.Placeholder(
        "The stored connection string is not shown, as it may hold a password. Type another to replace it.");
  }
  ShowParts();
  ShowPassword();
  SetHandlers();
  SetPartHandlers();
}

void frmDatabaseConnection::AddControls() {
  txtPassword_.Secret(true);
  txtRefreshRate_.Unit("ms");
  AddRow("&Kind of database", {&cmbProvider_});
  AddRow("Ser&ver", {&txtServer_});
  AddRow("Port", {&txtPort_});
  AddRow("Dat&abase", {&txtDatabase_, &cmdBrowse_});
  AddRow("&User", {&txtUser_});
  AddRow("Pass&word", {&txtPassword_, &cmdReplacePassword_, &cmdRemovePassword_});
  AddRow("Connection &string", {&txtConnectionString_});
  AddRow("Tab&les", {&cmbTable_});
  AddRow("Statement &or table", {&txtSQL_});
  AddRow("", {&lblColumns_});
  AddRow("R&efresh rate", {&txtRefreshRate_, &udRefreshRate_});
  AddPreview();
}

void frmDatabaseConnection::SetHandlers() {
  cmbTable_.DropDown = [this] { ListTables(false); };
  cmbTable_.Change = [this] { TableChosen(); };
  txtSQL_.Change = [this] { NoteChange(); };
  cmdBrowse_.Click = [this] {
    Browse(txtDatabase_, "Select the database.",
           {{"Databases", "db db3 sqlite sqlite3 mdb accdb"}, {"All files", "*"}});
  };
  cmdReplacePassword_.Click = [this] {
    NoteChange();
    password_ = password_ == Password::Stored ? Password::Typed : Password::Stored;
    txtPassword_.Text("");
    ShowPassword();
    if (password_ == Password::Typed) Focus(txtPassword_);
  };
  cmdRemovePassword_.Click = [this] {
    NoteChange();
    password_ = Password::None;
    txtPassword_.Text("");
    ShowPassword();
  };
  txtPassword_.Change = [this] {
    NoteChange();
    password_ = txtPassword_.Text().empty() && !stored_.IsSet() ? Password::None : Password::Typed;
  };
}

void frmDatabaseConnection::Describe(clsConnection& connection) const {
  connection.ConnectionType(static_cast<std::int32_t>(ConnectionKind::Database));
  connection.ConnectionString(WholeConnectionString());
  connection.RecordsetSQL(StatementOrTable(txtSQL_.Text()));
  connection.RecordsetRefreshRate(RefreshRateOf(txtRefreshRate_.Text()).value_or(0));
  // Stored and returned as entered; nothing here asks for it.
  if (Edited()) connection.RecordsetColumns(Edited()->RecordsetColumns());
}

bool frmDatabaseConnection::Check() {
  if (!CheckSource()) return false;
  if (!Require(txtSQL_, StatementOrTable(txtSQL_.Text()),
               "Say what to read of the database: a SELECT statement, or the name of a table.")) {
    return false;
  }
  if (RefreshRateOf(txtRefreshRate_.Text())) return true;
  Complain(txtRefreshRate_, "The refresh rate is a number of milliseconds, 0 or more.");
  Focus(txtRefreshRate_);
  return false;
}

}  // namespace LF2000
