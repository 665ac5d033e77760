#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/desk/OpenDeck.h"
#include "deck/objects/Application.h"

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
/// column, and for a row or column that is none; then nothing is done. Answers what was done, a sentence.
std::string linkColumn(OpenDeck& open, const ColumnLink& wish);

/// Shapes that are to show one row after the other.
struct RowFill {
  std::string connection;
  /// One for all shapes; several side by side in each line.
  std::vector<std::string> columns;
  std::int64_t row = 1;
  std::int64_t step = 1;
  int slide = 0;
  std::vector<std::uint32_t> shapes;
};
/// As above, by the order of the shapes (LF2000::modFillRows).
std::string fillRows(OpenDeck& open, const RowFill& wish);

/// Gives a shape another name, as one step that can be undone. An error for a name that another one has.
void renameShape(OpenDeck& open, int slide, std::uint32_t shape, const std::string& name);

}  // namespace app
