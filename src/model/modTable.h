#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "connections/clsConnection.h"
#include "host/powerpoint.h"

// Tables that take a connection as a whole, a shape of the source type that charts have. Rows and columns
// count from 1.

namespace LF2000::modTable {

/// How many rows show data: those between the header, where the table has one, and the total.
[[nodiscard]] std::int32_t BodyRows(const PowerPoint::Table& table);

/// The texts of the header row by column, place 0 and those of a table without one empty. Lines are put
/// together, as a header is broken where its column is narrow.
[[nodiscard]] std::vector<std::string> HeaderTexts(const PowerPoint::Table& table);

/// For each column of the table the column of the data that fills it. Place 0 is empty, as in those of the
/// data (clsConnection::Columns()). A table with a header goes by its texts, any other by position; a column
/// whose header is empty, or covered, is the author's own and has no name here. Raises which columns are not
/// there; `source` names the data in the text.
[[nodiscard]] std::vector<std::string> ColumnsOf(const PowerPoint::Table& table,
                                                 const std::vector<std::string>& dataColumns,
                                                 const std::string& source);

/// What a cell is to show.
struct CellText {
  std::int32_t Row = 0;
  std::int32_t Column = 0;
  std::string Text;
};

/// The body from `firstRow` of the data on, as the display type shows it; what lies beyond the data is blank.
/// Raises what keeps the table from taking the data.
[[nodiscard]] std::vector<CellText> ReadCells(PowerPoint::Shape& shape, clsConnection& connection,
                                              double firstRow, std::int16_t displayType);
/// Writes those that show something else.
void WriteCells(PowerPoint::Shape& shape, const std::vector<CellText>& cells);

/// Puts the author's own cells back.
void RestoreTable(PowerPoint::Shape& shape);

}  // namespace LF2000::modTable
