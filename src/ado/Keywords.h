#pragma once

#include "ado/ConnectionString.h"
#include "ado/Drivers.h"

namespace ado {

// A connection string comes with a deck, so it may say what is read, where and as
// whom, and nothing else: drivers know settings that load libraries, write files and
// run statements. docs/linking/databases.md lists what is known.

/// Keeps the settings that the driver may be given, spelt as it spells them, and
/// takes out what only other systems heed. Any other is an error that names it, and
/// so is a value that is more than it seems. `driver` is null for one that is
/// registered here but not known.
void keepKnownSettings(ConnectionString& string, const KnownDriver* driver);

/// The same beside "DSN=": nothing that would send the account of the data source
/// to another server.
void keepKnownSettingsBesideSource(ConnectionString& string);

/// How the driver reads braces; `driver` is null for one whose library is not known.
[[nodiscard]] Braces bracesOf(const KnownDriver* driver);

}  // namespace ado
