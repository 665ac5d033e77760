#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "connections/TextFileReader.h"

/// Bytes as a file would give them, in a buffer of exactly their size.
inline host::Bytes BytesOf(std::string_view text) {
  host::Bytes bytes{std::make_unique_for_overwrite<char[]>(text.size()), text.size()};
  std::copy(text.begin(), text.end(), bytes.data.get());
  return bytes;
}

/// The table in one line: columns, then rows, "|" between fields and "/"
/// between rows; "~" for a missing field.
inline std::string Written(const host::TextTable& table) {
  std::string text;
  for (const std::string& column : table.columns()) text += (text.empty() ? "" : "|") + column;
  for (std::size_t row = 0; row < table.rowCount(); ++row) {
    for (std::size_t column = 0; column < table.columns().size(); ++column) {
      text += column == 0 ? '/' : '|';
      text += table.field(row, column).value_or("~");
    }
  }
  return text;
}
