#pragma once

#include <map>
#include <string>

#include "connections/clsConnection.h"

namespace app {

/// The words for kinds of sources, as --type takes them.
const std::map<std::string, LF2000::ConnectionKind>& sourceTypes();

/// Has a workbook's connection read what its sheet holds, rows to come included, and says so in a sentence.
/// Where the workbook cannot be read the range stays, and the sentence says why. The loop runs meanwhile.
std::string takeWholeSheet(LF2000::clsConnection& connection);

}  // namespace app
