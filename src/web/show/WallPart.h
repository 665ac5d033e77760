#pragma once

#include <optional>
#include <string_view>

namespace web {

/// Where a screen stands among those that show one slide together, as one wall.
struct WallPart {
  int columns = 1;
  int rows = 1;
  /// From 0, from the left and from the top.
  int column = 0;
  int row = 0;

  friend bool operator==(const WallPart&, const WallPart&) = default;
};

/// Screens in a row or a column of a wall.
inline constexpr int mostScreensInLine = 64;

/// What "2x1/1" says: columns x rows / number, counted from 1, row by row. Nothing when it says something
/// else, or names a screen that such a wall has not.
std::optional<WallPart> wallPartNamed(std::string_view text);

}  // namespace web
