#pragma once

#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/table.h"

namespace fakes {

class Table final : public PowerPoint::Table {
 public:
  /// Rows parted by "/", cells by "|"; "^" is covered by the cell above it.
  explicit Table(const std::string& cells) {
    for (const std::string& row : basic::Split(cells, '/')) rows.push_back(basic::Split(row, '|'));
  }
  std::int32_t RowCount() const override { return static_cast<std::int32_t>(rows.size()); }
  std::int32_t ColumnCount() const override { return static_cast<std::int32_t>(rows.at(0).size()); }
  bool FirstRow() const override { return hasHeader; }
  bool LastRow() const override { return hasTotal; }
  bool IsCovered(std::int32_t row, std::int32_t column) const override { return Cell(row, column) == "^"; }
  std::string Text(std::int32_t row, std::int32_t column) const override {
    return IsCovered(row, column) ? std::string() : Cell(row, column);
  }
  void Text(std::int32_t row, std::int32_t column, std::string_view text) override {
    if (authors_.empty()) authors_ = rows;
    rows.at(static_cast<std::size_t>(row) - 1).at(static_cast<std::size_t>(column) - 1) = text;
    ++writes;
  }
  void Restore() override {
    if (!authors_.empty()) rows = std::exchange(authors_, {});
  }

  /// As in the constructor.
  std::string Cells() const {
    std::string text;
    for (const auto& row : rows) {
      for (const std::string& cell : row) text += cell + "|";
      text.back() = '/';
    }
    text.pop_back();
    return text;
  }
  std::vector<std::vector<std::string>> rows;
  bool hasHeader = true;
  bool hasTotal = false;
  int writes = 0;

 private:
  const std::string& Cell(std::int32_t row, std::int32_t column) const {
    return rows.at(static_cast<std::size_t>(row) - 1).at(static_cast<std::size_t>(column) - 1);
  }

  /// What it held before the first text was written.
  std::vector<std::vector<std::string>> authors_;
};

}  // namespace fakes
