#pragma once

#include <string>
#include <vector>

#include "connections/clsConnection.h"

namespace app {

/// What an author should know of an open connection's source, a sentence each: what its reader noticed in a
/// text file, or what a worksheet's range leaves out.
std::vector<std::string> remarksOn(const LF2000::clsConnection& connection);

/// The columns of an open connection that there is something to link to. A range of a worksheet may have
/// columns with neither a name nor data besides.
std::vector<std::string> offeredColumns(LF2000::clsConnection& connection);

}  // namespace app
