#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "basic/numberformat/NumberFormat.h"
#include "workbook/book/Parts.h"

namespace workbook {

/// How a cell of some style shows its value.
struct CellFormat {
  std::string code = "General";
  basic::NumberFormat format;
  /// Neither changes text nor is a date: "General" or "@".
  bool isPlain = true;
};

/// The number formats of the cell styles.
class Styles {
 public:
  /// Without a part every cell is General.
  Styles(const Parts& parts, const std::string& part);

  /// General for a style that the workbook does not have.
  [[nodiscard]] const CellFormat& at(std::size_t style) const;

 private:
  const CellFormat* formatOf(std::uint32_t number, const std::map<std::uint32_t, std::string>& custom);

  std::map<std::uint32_t, CellFormat> formats_;  // by number; the addresses stay
  std::vector<const CellFormat*> styles_;
  CellFormat general_;
};

}  // namespace workbook
