#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "basic/CellReference.h"
#include "deck/charts/ChartData.h"
#include "opc/Package.h"

namespace deck {

struct FilledSheet {
  std::string text;
  /// Whether formulas had to give way to data.
  bool lostFormulas = false;
};

/// A worksheet (ECMA-376 part 1, 18.3.1) with the data in an area: the header in
/// its first row, the categories in its first column. Cells of the area `used`
/// outside of it are emptied, all others stay. Cells keep their formats, further
/// ones take those above or left of them. Parses the part and leaves it in
/// disorder. Throws basic::Error when the rows are.
FilledSheet fillSheet(opc::Part& part, const ChartData& data, const std::vector<std::string>& header,
                      const basic::Area& area, const basic::Area& used);

/// Text as a worksheet stores it, before the escaping of XML: LF for line ends,
/// not longer than a cell takes, and what reads as an escape of a character
/// (_x000D_) escaped itself.
std::string escapedForSheet(std::string_view text);

}  // namespace deck
