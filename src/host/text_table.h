#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// A whole table of text: the fields of all rows in one buffer, found by
/// offsets, some two bytes a field. Built once, then only read; movable, not
/// copyable. Text is UTF-8.
class TextTable {
 public:
  [[nodiscard]] const std::vector<std::string>& columns() const { return columns_; }
  [[nodiscard]] std::size_t rowCount() const { return 0; }
  /// A field by 0-based row and column; nothing where its line was too short.
  [[nodiscard]] std::optional<std::string_view> field(std::size_t row, std::size_t column) const;

 private:
  std::vector<std::string> columns_;
};

}  // namespace host
