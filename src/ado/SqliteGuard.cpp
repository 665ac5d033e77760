#include "ado/SqliteGuard.h"

#include <sqlite3.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace ado {
namespace {

thread_local bool opensReadOnly = false;

bool isOneOf(const char* name, std::initializer_list<const char*> names) {
  return name != nullptr && std::any_of(names.begin(), names.end(),
                                        [&](const char* each) { return sqlite3_stricmp(name, each) == 0; });
}

int authorise(void*, int action, const char*, const char* function, const char*, const char*) {
  const bool loads = action == SQLITE_FUNCTION && isOneOf(function, {"load_extension"});
  return loads ? SQLITE_DENY : SQLITE_OK;
}

int authoriseReading(void*, int action, const char* first, const char* second, const char*, const char*) {
  const bool escapes =
      action == SQLITE_ATTACH || action == SQLITE_DETACH ||
      (action == SQLITE_PRAGMA && isOneOf(first, {"query_only", "writable_schema", "journal_mode"}));
  return escapes ? SQLITE_DENY : authorise(nullptr, action, first, second, nullptr, nullptr);
}

int guard(sqlite3* database, const char**, const sqlite3_api_routines*) {
  // The schema comes with the file, which may be somebody else's, too.
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  if (!opensReadOnly) return sqlite3_set_authorizer(database, &authorise, nullptr);
  const int failed = sqlite3_exec(database, "PRAGMA query_only = 1", nullptr, nullptr, nullptr);
  return failed != SQLITE_OK ? failed : sqlite3_set_authorizer(database, &authoriseReading, nullptr);
}

}  // namespace

void guardSqlite() {
  // Registering it again changes nothing. The type is the one that SQLite asks for.
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(&guard));
}

SqliteReadOnly::SqliteReadOnly(bool isReadOnly) : before_(std::exchange(opensReadOnly, isReadOnly)) {}
SqliteReadOnly::~SqliteReadOnly() { opensReadOnly = before_; }

}  // namespace ado
