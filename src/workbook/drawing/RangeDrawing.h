#pragma once

#include <string>
#include <string_view>

#include "host/services.h"

namespace workbook {

/// Draws cells of a workbook as an SVG picture of their natural size, as a
/// spreadsheet program shows them: texts under their number formats, fonts,
/// colours, borders, alignment, merged and hidden cells, grid lines where the
/// sheet shows them. Left out are conditional formats, turned text and what lies
/// over cells. At most 500 rows and 100 columns are drawn.
///
/// `item` is what a link names behind the file: "Sheet1!R1C1:R5C4" (as links of
/// objects write it), "Sheet1!A1:D5", a sheet's name for all its data, a defined
/// name; empty for the first sheet. `path` is one of this system. Throws
/// basic::Error. The loop may run meanwhile.
std::string drawRange(const std::string& path, std::string_view item, host::Loop& loop);

}  // namespace workbook
