// A connection's description, and how far its source is open.

#include "connections/clsConnection.h"

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"

namespace LF2000 {

namespace {

constexpr char Separator = '\t';

const std::string& Piece(const std::vector<std::string>& pieces, std::size_t index) {
  if (index >= pieces.size()) basic::Raise(basic::RuntimeError::SubscriptOutOfRange);
  return pieces[index];
}

std::string Field(std::string_view value) { return std::string(value) + Separator; }
std::string BooleanField(bool value) { return Field(value ? "-1" : "0"); }

}  // namespace

clsConnection::~clsConnection() {
  switch (Kind()) {
    case ConnectionKind::TextFile:
      CloseFile();
      break;
    case ConnectionKind::Database:
      CloseConnection();
      break;
    case ConnectionKind::Excel:
      CloseExcel();
      break;
  }
}

std::string clsConnection::TagString() const {
  std::string text = Field(basic::CStr(connectionType_)) + Field(connectionDescription_);
  switch (Kind()) {
    case ConnectionKind::TextFile:
      text += Field(connectionFileString_) + BooleanField(connectionFirstRowFieldNames_);
      break;
    case ConnectionKind::Database:
      text += Field(connectionString_) + Field(recordsetSQL_) + Field(recordsetColumns_) +
              Field(basic::CStr(recordsetRefreshRate_));
      break;
    case ConnectionKind::Excel:
      text += Field(connectionFileString_) + Field(connectionSheet_) +
              BooleanField(connectionFirstRowFieldNames_) + Field(connectionRange_);
      break;
  }
  return text;
}

void clsConnection::TagString(std::string_view text) try {
  const std::vector<std::string> pieces = basic::Split(text, Separator);
  connectionType_ = basic::CLng(Piece(pieces, 0));
  connectionDescription_ = Piece(pieces, 1);
  switch (Kind()) {
    case ConnectionKind::TextFile:
      connectionFileString_ = Piece(pieces, 2);
      connectionFirstRowFieldNames_ = basic::CBool(Piece(pieces, 3));
      break;
    case ConnectionKind::Database:
      connectionString_ = Piece(pieces, 2);
      recordsetSQL_ = Piece(pieces, 3);
      recordsetColumns_ = Piece(pieces, 4);
      recordsetRefreshRate_ = basic::CDbl(Piece(pieces, 5));
      break;
    case ConnectionKind::Excel:
      connectionFileString_ = Piece(pieces, 2);
      connectionSheet_ = Piece(pieces, 3);
      connectionFirstRowFieldNames_ = basic::CBool(Piece(pieces, 4));
      connectionRange_ = Piece(pieces, 5);
      break;
  }
} catch (...) {
  modErrors::SetLastError();
  modErrors::RaiseError(modErrors::SettingConnectionTag);
}

double clsConnection::RecordCount() const {
  double count = 0;
  if (dataOpen_ && recordset_) {
    modGlobalFunctions::IgnoreErrors([&] { count = static_cast<double>(recordset_->RecordCount()); });
  }
  return count;
}

double clsConnection::ColumnCount() const {
  double count = 0;
  if (dataOpen_ && recordset_) {
    modGlobalFunctions::IgnoreErrors([&] { count = recordset_->Fields().Count(); });
  }
  return count;
}

namespace {

/// A query that raises answers False.
template <typename Query>
bool Answer(Query&& query) {
  bool answer = false;
  modGlobalFunctions::IgnoreErrors([&] { answer = query(); });
  return answer;
}

bool HasPassed(basic::Date start, std::int32_t seconds) {
  return basic::AddSeconds(start, seconds) < host::Current().clock->Now();
}

}  // namespace

bool clsConnection::ConnectionReady() const {
  return Answer([&] {
    if (IsFile()) return dataOpen_;
    if (Kind() == ConnectionKind::Database) return !connection_ || connection_->State() == ADODB::adStateOpen;
    return false;
  });
}

bool clsConnection::ConnectionTimedOut() const {
  return Answer([&] {
    if (IsFile()) return !dataOpen_;
    if (Kind() != ConnectionKind::Database || ConnectionReady()) return false;
    return HasPassed(connectionStartTime_, connection_->ConnectionTimeout());
  });
}

bool clsConnection::RecordsetReady() const {
  return Answer([&] {
    if (!IsFile() && Kind() != ConnectionKind::Database) return false;
    return dataOpen_ && recordset_ && recordset_->State() == ADODB::adStateOpen;
  });
}

bool clsConnection::RecordsetTimedOut() const {
  return Answer([&] {
    if (IsFile()) return !dataOpen_;
    if (Kind() != ConnectionKind::Database || RecordsetReady()) return false;
    if (!connection_) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
    return HasPassed(recordsetStartTime_, connection_->CommandTimeout());
  });
}

std::string ColumnLetters(std::int32_t number) {
  if (number < 27) return {static_cast<char>(number + 64)};
  return {static_cast<char>((number - 1) / 26 + 64), static_cast<char>((number - 1) % 26 + 65)};
}

void clsConnection::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "clsConnection", text);
}

}  // namespace LF2000
