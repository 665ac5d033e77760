#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ado/CellText.h"
#include "ado/ResultTable.h"

namespace ado {

struct Dialect;

/// A column of a result as the driver describes it.
struct ColumnDescription {
  std::string name;
  std::int16_t type = 0;  // SQL data type
  std::size_t size = 0;   // characters or bytes; 0 where the driver does not know
  bool isUnsigned = false;
};

/// Fetches one column: buffers for the rows that come in one block, and how
/// their contents become cells.
class Column {
 public:
  Column(ColumnDescription description, const Dialect& dialect);

  /// Values may be longer than what the driver says, or than any buffer.
  [[nodiscard]] bool isLong() const { return long_; }

  /// Bytes that the buffer of one value takes.
  [[nodiscard]] std::size_t width() const { return width_; }

  /// Has the driver fetch blocks of so many rows into the buffers. `number`
  /// counts from 1.
  void bind(void* statement, std::uint16_t number, std::size_t rows);
  /// Instead of binding: every value is asked for on its own, row by row.
  void leaveUnbound(std::uint16_t number) { number_ = number; }
  /// Adds the cell of a row of the block; asks the driver for what did not fit.
  void addCell(void* statement, std::size_t row, ResultTableBuilder& builder);

 private:
  /// What the driver converts to, a SQL_C_ type.
  struct Transfer {
    std::int16_t type;
    std::size_t width;  // of one value; 0 for text and bytes
  };
  [[nodiscard]] static Transfer transferOf(const ColumnDescription& description, bool looseTypes);
  [[nodiscard]] static TextMeaning meaningOf(const ColumnDescription& description);
  [[nodiscard]] bool isVariable() const { return transfer_.width == 0; }

  void addFixed(const char* value, ResultTableBuilder& builder) const;
  void addVariable(std::string_view value, ResultTableBuilder& builder) const;
  void addAsked(void* statement, ResultTableBuilder& builder);
  [[noreturn]] void failReading(void* statement) const;

  ColumnDescription description_;
  TextMeaning meaning_;
  Transfer transfer_;
  bool long_ = false;
  std::size_t width_;
  std::uint16_t number_ = 0;
  std::vector<char> buffer_;
  std::vector<std::intptr_t> lengths_;  // SQLLEN
};

}  // namespace ado
