#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/bytes.h"

namespace host {

/// A whole table of text: the fields of all rows lie in the one buffer that was
/// read, found by offsets. Built once by a TextTableBuilder, then only read;
/// movable, not copyable. Text is UTF-8.
///
/// The index takes ten bytes a row and two a field, however many columns a row
/// leaves out, and grows in blocks that never move, so that building a table
/// needs no more memory than having it.
class TextTable {
 public:
  /// No column, no row.
  TextTable() = default;

  [[nodiscard]] const std::vector<std::string>& columns() const { return columns_; }
  [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
  /// A field by 0-based row and column; nothing where the row has fewer fields.
  /// The row must exist. The view lives as long as the table.
  [[nodiscard]] std::optional<std::string_view> field(std::size_t row, std::size_t column) const;

 private:
  friend class TextTableBuilder;

  std::vector<std::string> columns_;
  Bytes text_;
  /// Where each row's record begins: block in the upper half, place in it in the lower.
  std::deque<std::uint32_t> rows_;
  /// Records: head (see text_table.cpp), offset of the row in the text (low and
  /// high half), then the end of each field, counted from the row's offset. A
  /// field begins one byte after the end of the one before. Rows longer than 16
  /// bits can count have ends of two halves.
  std::vector<std::unique_ptr<std::uint16_t[]>> blocks_;
};

/// Makes a TextTable, row by row in the order of the text.
class TextTableBuilder {
 public:
  /// Fills what is left of a field that became shorter in its place, and stands
  /// for its opening quote: one at the front of a field and any number at its
  /// end are no part of it. UTF-8 has no such byte.
  static constexpr char Filler = '\xFF';

  /// Fields that a row can have.
  static constexpr std::size_t MaxColumns = 32000;

  /// Takes the text over; one of 4 GiB or more is an error, and so are more
  /// than MaxColumns columns.
  TextTableBuilder(std::vector<std::string> columns, Bytes text);

  /// Begins a row whose first field begins at the offset.
  void BeginRow(std::size_t offset);
  /// Adds a field that ends before the byte at the offset. The next field of
  /// the row begins after that byte.
  void AddField(std::size_t end) {
    const std::size_t distance = end - start_;
    if (distance > NarrowEnd || wide_) {
      AddWideField(distance);
    } else {
      Push(static_cast<std::uint16_t>(distance));
    }
    ++fields_;
  }
  /// Ends the row begun last; fields that it lacks are no values.
  void EndRow();

  /// The table; the builder is used up.
  [[nodiscard]] TextTable Finish() { return std::move(table_); }

 private:
  static constexpr std::size_t NarrowEnd = 0xFFFF;

  void Push(std::uint16_t value) {
    if (next_ == blockEnd_) NewBlock();
    *next_++ = value;
  }
  void AddWideField(std::size_t distance);
  void NewBlock();

  TextTable table_;
  std::size_t blockSize_;
  std::uint16_t* record_ = nullptr;
  std::uint16_t* next_ = nullptr;
  std::uint16_t* blockEnd_ = nullptr;
  std::size_t start_ = 0;
  std::size_t fields_ = 0;
  bool wide_ = false;
};

}  // namespace host
