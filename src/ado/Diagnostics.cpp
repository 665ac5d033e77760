#include "ado/Diagnostics.h"

#include <sql.h>
#include <sqlext.h>

#include <array>

#include "ado/Encoding.h"
#include "basic/Strings.h"

namespace ado {
namespace {

SQLSMALLINT odbcKind(HandleKind kind) {
  switch (kind) {
    case HandleKind::Environment:
      return SQL_HANDLE_ENV;
    case HandleKind::Connection:
      return SQL_HANDLE_DBC;
    case HandleKind::Statement:
      return SQL_HANDLE_STMT;
  }
  return SQL_HANDLE_STMT;
}

std::string oneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const bool blank = c == '\n' || c == '\r' || c == '\t' || c == ' ';
    if (blank && (line.empty() || line.back() == ' ')) continue;
    line += blank ? ' ' : c;
  }
  while (!line.empty() && (line.back() == ' ' || line.back() == ';' || line.back() == '.')) line.pop_back();
  return line;
}

}  // namespace

Diagnosis diagnosisOf(HandleKind kind, void* handle) {
  constexpr SQLSMALLINT MostRecords = 5;
  Diagnosis diagnosis;
  for (SQLSMALLINT record = 1; record <= MostRecords; ++record) {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 2048> message{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRec(odbcKind(kind), handle, record, state.data(), &native, message.data(),
                                     static_cast<SQLSMALLINT>(message.size()), &length))) {
      break;
    }
    const auto* const stateText = reinterpret_cast<const char*>(state.data());
    const auto* const messageText = reinterpret_cast<const char*>(message.data());
    if (record == 1) diagnosis.state = stateText;
    if (!diagnosis.words.empty()) diagnosis.words += "; ";
    diagnosis.words += oneLine(utf8FromDriver(messageText)) + " (SQLSTATE " + stateText + ", native error " +
                       std::to_string(native) + ")";
  }
  if (diagnosis.words.empty()) diagnosis.words = "the driver gives no reason";
  return diagnosis;
}

std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets) {
  for (const std::string& secret : secrets) text = basic::Replace(text, secret, "***");
  return text;
}

}  // namespace ado
