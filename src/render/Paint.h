#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "render/Assets.h"
#include "render/Color.h"

// Fills, lines and effects with everything resolved: no theme, no reference left.

namespace render {

struct NoFill {};

struct GradientStop {
  double position = 0;  // 0 to 1
  Color color;
};

struct Gradient {
  enum class Shape : std::uint8_t { Linear, Circle, Rectangle };
  Shape shape = Shape::Linear;
  std::vector<GradientStop> stops;
  double angle = 0;  // degrees, clockwise from pointing right
  /// The angle is that of a square that is then stretched to the shape.
  bool scaled = false;
  /// Where a path gradient starts, as insets from the box, shares of its size:
  /// left, top, right, bottom.
  std::array<double, 4> focus = {0.5, 0.5, 0.5, 0.5};
};

struct PictureFill {
  const Asset* asset = nullptr;
  /// Shares of the picture cut off at left, top, right, bottom; negative adds margin.
  std::array<double, 4> crop = {};
  /// Shares of the shape that a stretched picture keeps clear of, likewise.
  std::array<double, 4> inset = {};
  double alpha = 1;
  bool grayscale = false;
  struct Tile {
    double offsetX = 0;  // px
    double offsetY = 0;
    double scaleX = 1;
    double scaleY = 1;
    bool flipX = false;
    bool flipY = false;
    /// Where the first tile lies in the box: shares of the free room.
    double alignX = 0;
    double alignY = 0;
  };
  std::optional<Tile> tile;
};

struct PatternFill {
  /// The bits of eight rows, the leftmost pixel highest; set is foreground.
  std::array<std::uint8_t, 8> rows = {};
  Color foreground;
  Color background;
};

using Fill = std::variant<NoFill, Color, Gradient, PictureFill, PatternFill>;

inline bool isVisible(const Fill& fill) { return !std::holds_alternative<NoFill>(fill); }

enum class Cap : std::uint8_t { Flat, Round, Square };
enum class Join : std::uint8_t { Round, Bevel, Miter };

struct LineEnd {
  enum class Kind : std::uint8_t { None, Triangle, Stealth, Diamond, Oval, Arrow };
  Kind kind = Kind::None;
  /// Multiples of the line's width.
  double width = 3;
  double length = 3;
};

struct Line {
  double width = 1;  // px
  /// Nothing, a colour, a gradient; others are not drawn.
  Fill fill;
  /// Lengths of dashes and gaps in multiples of the width; empty is solid.
  std::vector<double> dashes;
  Cap cap = Cap::Flat;
  Join join = Join::Round;
  LineEnd head;
  LineEnd tail;
};

struct Shadow {
  double blur = 0;  // px, as the file states it: twice the deviation
  double dx = 0;
  double dy = 0;
  Color color;
};

/// A preset pattern's bits by its name ("ltUpDiag").
std::optional<std::array<std::uint8_t, 8>> patternRows(std::string_view name);

}  // namespace render
