#pragma once

#include <string>
#include <vector>

#include "support/ZipFile.h"

namespace support {

/// A small workbook for a test: what is not set is not in it.
struct BookBuilder {
  /// What stands between <sheetData> and </sheetData> of the one sheet, Sheet1.
  std::string rows;
  /// What stands within <sst>, <numFmts>, <cellXfs>, <definedNames>.
  std::string strings;
  std::string formats;
  std::string styles;
  std::string names;
  bool from1904 = false;
  /// Whole parts in place of, or besides, the ordinary ones.
  std::vector<ZipEntry> parts;

  [[nodiscard]] std::string bytes() const;
};

}  // namespace support
