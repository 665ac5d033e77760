#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "render/paint/Assets.h"
#include "render/paint/Color.h"
#include "render/paint/Patterns.h"

// Fills, lines and effects with everything resolved: no theme, no reference left.

namespace render {

/// Nothing is painted (a:noFill), as where nothing was stated.
struct NoFill {};

struct GradientStop {
  double position = 0;  // 0 to 1
  Color color;
};

/// A gradient fill (ECMA-376 part 1, 20.1.8.33). It has two stops at least, in the order of their positions.
struct Gradient {
  /// Outline: from the focus to the shape's own outline.
  enum class Shape : std::uint8_t { Linear, Circle, Rectangle, Outline };
  Shape shape = Shape::Linear;
  std::vector<GradientStop> stops;
  double angle = 0;  // degrees, clockwise from pointing right
  /// The angle is that of a square that is then stretched to the shape.
  bool scaled = false;
  /// Where a path gradient starts, as insets from the box, shares of its size:
  /// left, top, right, bottom.
  std::array<double, 4> focus = {0.5, 0.5, 0.5, 0.5};
  /// Where a linear gradient runs before it repeats, likewise; negative reaches beyond the box.
  std::array<double, 4> tile = {};
  /// Every other repetition runs backwards.
  bool flips = false;
  bool turnsWithShape = true;
};

/// What is done to a picture's pixels, in the order of the file (the children of a:blip, 20.1.8.13). Amounts
/// are 0 to 1 where nothing else is said.
struct PictureEffect {
  enum class Kind : std::uint8_t {
    Grayscale,
    BiLevel,       // amount: the threshold of what becomes white
    Luminance,     // amount: brightness, second: contrast, -1 to 1
    Duotone,       // dark and light become color and other
    ChangeColor,   // color becomes other
    ReplaceColor,  // all become color
    Tint,          // amount: how far towards color
    Hue,           // amount: degrees; second: saturation, third: luminance, -1 to 1
    Blur,          // amount: px
    AlphaCeiling,
    AlphaFloor,
    AlphaInverse,
    AlphaBiLevel,  // amount: the threshold of what becomes opaque
    AlphaReplace,  // amount: everywhere
  };
  Kind kind = Kind::Grayscale;
  double amount = 0;
  double second = 0;
  double third = 0;
  Color color = {};
  Color other = {};
};

/// A picture as a fill (a:blipFill, 20.1.8.14).
struct PictureFill {
  /// Never null in a fill that was read; lives as long as its Assets.
  const Asset* asset = nullptr;
  /// Shares of the picture cut off at left, top, right, bottom; negative adds margin.
  std::array<double, 4> crop = {};
  /// Shares of the shape that a stretched picture keeps clear of, likewise.
  std::array<double, 4> inset = {};
  double alpha = 1;  // opacity, 0 to 1
  std::vector<PictureEffect> effects;
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
  /// Unset: one picture, stretched.
  std::optional<Tile> tile;
};

/// A preset pattern in its two colours (a:pattFill, 20.1.8.47); one pixel of it is one px.
struct PatternFill {
  PatternRows rows = {};
  Color foreground;
  Color background;
};

using Fill = std::variant<NoFill, Color, Gradient, PictureFill, PatternFill>;

inline bool isVisible(const Fill& fill) { return !std::holds_alternative<NoFill>(fill); }

enum class Cap : std::uint8_t { Flat, Round, Square };
enum class Join : std::uint8_t { Round, Bevel, Miter };

/// What stands at an end of a line that is not closed (a:headEnd, a:tailEnd).
struct LineEnd {
  enum class Kind : std::uint8_t { None, Triangle, Stealth, Diamond, Oval, Arrow };
  Kind kind = Kind::None;
  /// Multiples of the line's width.
  double width = 3;
  double length = 3;
};

/// How an outline is drawn (a:ln, 20.1.2.2.24).
struct Line {
  double width = 1;  // px; 0 is the thinnest line there is
  /// Nothing, a colour, a gradient; others are not drawn.
  Fill fill;
  /// Lengths of dashes and gaps in multiples of the width; empty is solid.
  std::vector<double> dashes;
  Cap cap = Cap::Flat;
  Join join = Join::Round;
  /// How many lines share the width; uneven ones are drawn even.
  int strands = 1;
  LineEnd head;
  LineEnd tail;
};

/// What a shadow or a reflection does to the shape's image: it is scaled and skewed
/// around a point of its box, then moved.
struct Displacement {
  double dx = 0;  // px
  double dy = 0;
  double scaleX = 1;
  double scaleY = 1;
  double skewX = 0;  // degrees
  double skewY = 0;
  /// The point that stays, as shares of the box.
  double alignX = 0.5;
  double alignY = 1;

  [[nodiscard]] bool isMove() const { return scaleX == 1 && scaleY == 1 && skewX == 0 && skewY == 0; }
};

/// An outer, inner or preset shadow (20.1.8.45, 20.1.8.40, 20.1.8.49).
struct Shadow : Displacement {
  double blur = 0;  // px, as the file states it: twice the deviation
  Color color;
};

/// Colour all around (20.1.8.32).
struct Glow {
  double radius = 0;  // px
  Color color;
};

/// The mirror image below (20.1.8.50).
struct Reflection : Displacement {
  double blur = 0;  // px
  /// Opacity at the foot of the shape and further up, with where along its height.
  double startAlpha = 1;
  double startPosition = 0;
  double endAlpha = 0;
  double endPosition = 1;
};

/// A raised edge; only its light and shade are drawn.
struct Bevel {
  double width = 0;  // px
};

/// What a list of effects states (20.1.8.26); each at most once. Blurs and radii are at most 400 px.
struct Effects {
  std::optional<Shadow> shadow;
  /// Moved towards where it is dark.
  std::optional<Shadow> innerShadow;
  std::optional<Glow> glow;
  std::optional<Reflection> reflection;
  std::optional<Bevel> bevel;
  double softEdge = 0;  // px
  double blur = 0;      // px, as a shadow's

  [[nodiscard]] bool isEmpty() const {
    return !shadow && !innerShadow && !glow && !reflection && !bevel && softEdge <= 0 && blur <= 0;
  }
  /// A shadow that is neither scaled nor skewed, and nothing else.
  [[nodiscard]] bool isMovedShadow() const {
    return shadow && shadow->isMove() && !innerShadow && !glow && !reflection && !bevel && softEdge <= 0 &&
           blur <= 0;
  }
};

}  // namespace render
