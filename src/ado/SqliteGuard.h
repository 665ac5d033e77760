#pragma once

namespace ado {

/// From now on no statement loads a library into SQLite. Its driver lets them
/// ("SELECT load_extension(…)"), and statements come with decks. Extensions that a data
/// source of this machine names (LoadExt) are loaded all the same.
void guardSqlite();

/// While it lives, databases of SQLite that this thread opens refuse every change, also that of this rule,
/// and to attach others.
class SqliteReadOnly {
 public:
  explicit SqliteReadOnly(bool isReadOnly);
  ~SqliteReadOnly();
  SqliteReadOnly(const SqliteReadOnly&) = delete;
  SqliteReadOnly& operator=(const SqliteReadOnly&) = delete;

 private:
  bool before_;
};

}  // namespace ado
