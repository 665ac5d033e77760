#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "connections/clsConnection.h"

namespace app {

/// The words for kinds of sources, as --type takes them.
std::vector<std::string> typeWords();

/// What one of these words stands for.
LF2000::ConnectionKind kindOfType(std::string_view word);

/// Has a workbook's connection read what its sheet holds, rows to come included, and says so in a sentence.
/// Where the workbook cannot be read the range stays, and the sentence says why. The loop runs meanwhile.
std::string takeWholeSheet(LF2000::clsConnection& connection);

}  // namespace app
