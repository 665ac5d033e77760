#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "basic/Date.h"

namespace LF2000 {

/// What the runtime knows of one shape that shows data.
struct clsRTShapeInfo {
  std::string Name;
  std::int32_t SourceType = 0;
  /// The connection's number as the shape's tag holds it.
  std::string ConnectionNumber;
  /// The same as a key of Connections, formatted "000".
  std::string ConnectionKey;
  std::string ColumnName;
  double Row = 0;
  std::string DateFormat;
  std::string ObjectFolder;
  std::string ObjectExtension;
  /// The text last written into the shape, of a linked object the file it shows
  /// (empty: its own content); nothing before the first.
  std::optional<std::string> Text;
  /// Whether the data held a value for the text, were it an empty one, when they were last looked at.
  bool HasValue = true;
  /// The connection's data (its DataVersion) that the chart or table was last filled with.
  std::int64_t DataVersion = 0;
  /// How many rows a table shows; nothing of any other shape.
  std::optional<std::int32_t> TableRows;
  /// The row in the table's first one when it was last filled.
  double TableRow = 0;
  /// When the file that it shows had last been changed.
  basic::Date FileDate;
  /// The place of the shape's entry in the slide's Scrolls.
  std::optional<std::size_t> Scroll;
};

}  // namespace LF2000
