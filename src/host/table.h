#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace PowerPoint {

/// A table of a slide: what its rows, columns, cells and their text ranges say in the object model's own
/// reference, in one object. Rows and columns count from 1; others than there are, are errors.
class Table {
 public:
  virtual ~Table() = default;
  [[nodiscard]] virtual std::int32_t RowCount() const = 0;
  [[nodiscard]] virtual std::int32_t ColumnCount() const = 0;
  /// Whether the first row is a header, and the last one a total.
  [[nodiscard]] virtual bool FirstRow() const = 0;
  [[nodiscard]] virtual bool LastRow() const = 0;
  /// Whether there is no cell at this place of its own: a cell merged to the left or above lies over it.
  [[nodiscard]] virtual bool IsCovered(std::int32_t row, std::int32_t column) const = 0;
  /// As TextRange::Text; of a covered place empty.
  [[nodiscard]] virtual std::string Text(std::int32_t row, std::int32_t column) const = 0;
  /// Replaces a cell's text as TextRange::Text does. Covered places take none.
  virtual void Text(std::int32_t row, std::int32_t column, std::string_view text) = 0;
  /// Puts back the author's own texts, each of which the first replacing put aside: a service of the host,
  /// the object model has no such member.
  virtual void Restore() = 0;
};

}  // namespace PowerPoint
