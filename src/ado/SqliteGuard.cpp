#include "ado/SqliteGuard.h"

#include <sqlite3.h>

namespace ado {
namespace {

int authorise(void*, int action, const char*, const char* function, const char*, const char*) {
  const bool loads =
      action == SQLITE_FUNCTION && function != nullptr && sqlite3_stricmp(function, "load_extension") == 0;
  return loads ? SQLITE_DENY : SQLITE_OK;
}

int guard(sqlite3* database, const char**, const sqlite3_api_routines*) {
  // The schema comes with the file, which may be somebody else's, too.
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  return sqlite3_set_authorizer(database, &authorise, nullptr);
}

}  // namespace

void guardSqlite() {
  // Registering it again changes nothing. The type is the one that SQLite asks for.
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(&guard));
}

}  // namespace ado
