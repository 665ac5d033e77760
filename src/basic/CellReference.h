#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace basic {

/// The measures of a sheet (ECMA-376 part 1, 18.3.1.4 and 18.3.1.73).
inline constexpr std::uint32_t MaximumRow = 1048576;
inline constexpr std::uint32_t MaximumColumn = 16384;

/// A rectangle of cells; rows and columns from 1, both ends included. Whole
/// columns run to MaximumRow, whole rows to MaximumColumn.
struct Area {
  std::uint32_t firstRow = 1;
  std::uint32_t lastRow = 1;
  std::uint32_t firstColumn = 1;
  std::uint32_t lastColumn = 1;

  friend bool operator==(const Area&, const Area&) = default;
};

/// An area and the sheet that stands before it, if any.
struct Reference {
  std::optional<std::string> sheet;
  Area area;
};

/// Reads "A1:I10", "$A$1:$C$5", "A:C", "1:5", "B2", also with a sheet before it
/// ("Sheet2!A1", "'My ''sheet'''!A1"). Opposite corners come in any order.
/// Nothing for other text.
std::optional<Reference> ParseReference(std::string_view text);

/// A cell's place as files write it ("AB12"), without regard to what lies
/// outside a sheet's measures: then nothing.
struct CellPlace {
  std::uint32_t row = 0;
  std::uint32_t column = 0;
};
std::optional<CellPlace> ParsePlace(std::string_view text);

/// 1 is A, 27 is AA; as many letters as it takes.
std::string ColumnLetters(std::uint32_t column);

/// "A1:I10"; one cell alone "A1".
std::string AreaText(const Area& area);

/// As formulas write it: "Sheet1!$B$2:$B$13", "'My sheet'!$A$1".
std::string ReferenceText(const Reference& reference);

}  // namespace basic
