#pragma once

#include <string>

#include "support/DeckBuilder.h"

namespace support {

/// XML of a c:ser: its name from row 1 of the column, its values from rows 2 to 4.
/// `formatting` stands behind the name.
std::string series(int index, const std::string& column, const std::string& name, const std::string& values,
                   const std::string& formatting = {});
/// XML of a group of series ("barChart") on the axes 10 * `axes` + 1 and 2.
std::string group(const std::string& kind, const std::string& series, int axes = 1);

/// A deck of one slide with the chart "Chart": sales of three months by two
/// series, and its workbook with a table, a note below it and a second sheet.
struct ChartDeck {
  std::string groups =
      group("barChart", series(0, "B", "North", "1,2,3",
                               "<c:spPr><a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill></c:spPr>") +
                            series(1, "C", "South", "4,5,6"));
  /// Rows of the sheet and the table, in place of the ordinary ones.
  std::string rows;
  std::string table;
  std::string book;
  /// What stands in place of c:externalData and its relationship.
  std::string externalData = "<c:externalData r:id=\"rId1\"/>";
  std::string relationship =
      "<Relationship Id=\"rId1\" "
      "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/package\" "
      "Target=\"../embeddings/book.xlsx\"/>";

  [[nodiscard]] std::string bookBytes() const;
  [[nodiscard]] DeckBuilder build() const;
};

/// The series of a chart's part: "North@Sheet1!$B$1: Jan 1, Feb 2, Mar -; …".
std::string seriesIn(const std::string& chartXml);

}  // namespace support
