#pragma once

#include <string>
#include <vector>

#include "host/services.h"

namespace workbook {

struct SheetDescription {
  std::string name;
  bool isVisible = true;
  /// The cells with data, such as "A1:I10".
  std::string dimension;
};

struct NameDescription {
  std::string name;
  std::string refersTo;
  /// The sheet that it holds for; empty when it holds for the whole workbook.
  std::string sheet;
};

struct Description {
  /// The worksheets in the order of the workbook, hidden ones too.
  std::vector<SheetDescription> sheets;
  /// Without those that programs hide from their users.
  std::vector<NameDescription> names;
};

/// What there is in a workbook to be linked to. `path` is one of this system.
/// Throws basic::Error. The loop may run meanwhile.
Description describe(const std::string& path, host::Loop& loop);

}  // namespace workbook
