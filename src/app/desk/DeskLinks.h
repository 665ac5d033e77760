#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/desk/OpenDeck.h"

namespace app {

/// A column or a cell of the data that was put on shapes.
struct ColumnLink {
  std::string connection;
  std::string column;
  /// From 1.
  std::int64_t row = 1;
  /// From 1.
  int slide = 0;
  /// By their ids.
  std::vector<std::uint32_t> shapes;
  /// The next shape in reading order gets the next row.
  bool countsUp = false;
};

/// Links the shapes and fills them, as one step that can be undone. An error for shapes that cannot take a
/// column, and for a row or column that is none; then nothing is done.
void linkColumn(OpenDeck& open, const ColumnLink& wish);

}  // namespace app
