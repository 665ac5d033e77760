#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbook/drawing/Palette.h"

namespace workbook {

enum class Side { Left, Right, Top, Bottom };
inline constexpr std::size_t Sides = 4;

struct Border {
  enum class Dash { Solid, Dashed, Dotted };
  /// In CSS px; 0 for none.
  double width = 0;
  Dash dash = Dash::Solid;
  bool isDouble = false;
  Rgb color = 0;
};

/// What a cell style makes of a cell beside its text (ECMA-376 part 1, 18.8.45).
struct CellLook {
  enum class Across { General, Left, Center, Right, Justify };
  enum class Down { Top, Center, Bottom };

  std::string font = "Calibri";
  /// In points.
  double size = 11;
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;
  bool isStruck = false;
  Rgb color = 0;
  std::optional<Rgb> fill;
  std::array<Border, Sides> borders;
  Across across = Across::General;
  Down down = Down::Bottom;
  /// Steps of three blanks.
  unsigned indent = 0;
  bool wraps = false;

  [[nodiscard]] const Border& border(Side side) const { return borders[static_cast<std::size_t>(side)]; }
};

/// The looks of all cell styles of a workbook.
class CellLooks {
 public:
  /// Parts that are empty names are not there; then cells look as in a new
  /// workbook.
  CellLooks(const Parts& parts, const std::string& stylesPart, const std::string& themePart);

  /// That of a new workbook for a style that there is not.
  [[nodiscard]] const CellLook& at(std::size_t style) const;

 private:
  std::vector<CellLook> looks_;
  CellLook plain_;
};

}  // namespace workbook
