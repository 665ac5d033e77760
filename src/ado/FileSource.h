#pragma once

#include <string>
#include <string_view>

#include "ado/ConnectionString.h"

namespace ado {

/// The settings of a file data source ("FILEDSN="): an INI file with the section
/// [ODBC]. It is read here rather than by the driver manager, so that what it says is
/// looked at like any connection string. A name without a folder means the file of the
/// driver manager's folder, and may lack its ".dsn". Throws when it cannot be read.
/// While one on another machine is read, the loop runs (host/drives.h).
[[nodiscard]] ConnectionString readFileSource(std::string_view name);

}  // namespace ado
