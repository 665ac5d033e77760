#pragma once

namespace ado {

/// From now on no statement loads a library into SQLite. Its driver lets them
/// ("SELECT load_extension(…)"), and statements come with decks. Extensions that a data
/// source of this machine names (LoadExt) are loaded all the same.
void guardSqlite();

}  // namespace ado
