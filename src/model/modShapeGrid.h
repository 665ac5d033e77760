#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/modPlaces.h"

/// Shapes that stand as the cells of a table do.
namespace LF2000::modShapeGrid {

struct Grid {
  /// Row by row, each from left to right; not to be used when something hinders.
  std::vector<modPlaces::Placed> Cells;
  /// What keeps the shapes from being a grid, each a sentence for people.
  std::vector<std::string> Hindrances;
};

/// The grid of `rows` times `columns` (both at least 1) whose upper left cell is the shape of that name.
/// Its cells are shapes of the start's kind and about its height. A cell belongs to the column whose
/// topmost, and to the row whose leftmost cell stands next, if they share an edge or the middle, within
/// modPlaces::Tolerance. Rows follow at even distances; columns are as wide as they are. Shapes further
/// to the right and below are left alone; one that stands among the cells without being one hinders, as
/// what it was meant to be is not known.
[[nodiscard]] Grid FindGrid(const std::vector<modPlaces::Placed>& shapes, std::string_view start,
                            std::int32_t rows, std::int32_t columns);

}  // namespace LF2000::modShapeGrid
