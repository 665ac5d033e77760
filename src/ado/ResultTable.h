#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "basic/Variant.h"

namespace ado {

/// What a cell of a result holds.
enum class CellKind : std::uint8_t { Null, Boolean, Int32, Int64, Double, Decimal, Date, Text, Binary };

/// The result of a query: rows one behind the other in blocks that never move,
/// with no allocation a cell. A row takes 8 bytes and 4 a cell besides the
/// values, which have 1 byte (Boolean), 4, 8, or as many as the text or bytes.
/// Built by a ResultTableBuilder, then only read.
class ResultTable {
 public:
  ResultTable() = default;

  [[nodiscard]] const std::vector<std::string>& columns() const { return columns_; }
  [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
  /// By 0-based row and column, which must exist.
  [[nodiscard]] basic::Variant value(std::size_t row, std::size_t column) const;

 private:
  friend class ResultTableBuilder;

  std::vector<std::string> columns_;
  std::deque<const char*> rows_;
  std::vector<std::unique_ptr<char[]>> blocks_;
};

/// Makes a ResultTable: as many cells as there are columns, then endRow.
class ResultTableBuilder {
 public:
  explicit ResultTableBuilder(std::vector<std::string> columns);

  void addNull() { add(CellKind::Null, nullptr, 0); }
  void addBoolean(bool value);
  void addInt32(std::int32_t value);
  void addInt64(std::int64_t value);
  void addDouble(double value);
  void addDate(basic::Date value);
  void addDecimal(std::string_view digits) { add(CellKind::Decimal, digits.data(), digits.size()); }
  void addText(std::string_view text) { add(CellKind::Text, text.data(), text.size()); }
  void addBinary(std::string_view bytes) { add(CellKind::Binary, bytes.data(), bytes.size()); }
  /// A row of 256 MB or more is an error.
  void endRow();

  [[nodiscard]] ResultTable finish() { return std::move(table_); }

 private:
  void add(CellKind kind, const void* value, std::size_t size);
  /// Moves the row under way to a block with so much room.
  void moveRow(std::size_t needed);

  ResultTable table_;
  std::size_t headSize_;  // of a whole row
  // The row under way lies where it will stay, unless its block is too small.
  char* row_ = nullptr;
  std::size_t room_ = 0;
  std::size_t headsSize_ = 0;
  std::size_t valuesSize_ = 0;
  std::size_t blockSize_;
};

}  // namespace ado
