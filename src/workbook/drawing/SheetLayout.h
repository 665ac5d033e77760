#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "basic/CellReference.h"
#include "workbook/book/Parts.h"

namespace workbook {

/// CSS px, of which 96 make an inch.
inline constexpr double PxPerPoint = 96.0 / 72.0;

/// How wide, high and merged the cells of a sheet are. Widths and heights are in
/// CSS px; hidden columns and rows have none.
class SheetLayout {
 public:
  SheetLayout(const Parts& parts, const std::string& sheetPart);

  [[nodiscard]] double width(std::uint32_t column) const;
  [[nodiscard]] double height(std::uint32_t row) const;
  [[nodiscard]] const std::vector<basic::Area>& merged() const { return merged_; }
  [[nodiscard]] bool showsGrid() const { return showsGrid_; }

 private:
  struct Columns {
    std::uint32_t last = 0;
    double width = 0;
  };
  std::map<std::uint32_t, Columns> columns_;  // by the first one
  std::map<std::uint32_t, double> heights_;
  std::vector<basic::Area> merged_;
  double usualWidth_;
  double usualHeight_;
  bool showsGrid_ = true;
};

}  // namespace workbook
