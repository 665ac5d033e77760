#pragma once

#include <cstdint>
#include <string>

#include "addin/support/modErrors.h"
#include "connections/clsConnection.h"

namespace LF2000 {

/// An operation's code for a connection of that kind.
inline std::int32_t CodeFor(ConnectionKind kind, std::int32_t file, std::int32_t database,
                            std::int32_t excel) {
  return kind == ConnectionKind::Database ? database : kind == ConnectionKind::Excel ? excel : file;
}

/// In a handler: raises the operation's error for a connection of that kind,
/// around the description of the error being handled.
[[noreturn]] inline void RaiseFor(ConnectionKind kind, const std::string& description, std::int32_t fileCode,
                                  std::int32_t databaseCode, std::int32_t excelCode) {
  modErrors::SetLastError();
  const std::string underlying = modErrors::LastError.Description;
  modErrors::RaiseError(CodeFor(kind, fileCode, databaseCode, excelCode), description, underlying);
}

}  // namespace LF2000
