#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "render/geometry/Units.h"

// The geometry engine of DrawingML (ECMA-376 part 1, 20.1.9): guides computed
// from a shape's size and adjust values, paths drawn through them.

namespace render {

/// One command of a path as in SVG 2, 9.3: M L Q C A Z with absolute coordinates in px.
struct PathCommand {
  char op;
  /// The first operands(op) of them count; of an arc: radii, turn (0), large, clockwise, end.
  double v[7];
};

/// How many numbers a path command has.
constexpr int operands(char op) {
  switch (op) {
    case 'M':
    case 'L':
      return 2;
    case 'Q':
      return 4;
    case 'C':
      return 6;
    case 'A':
      return 7;
    default:
      return 0;
  }
}

/// What is done to the shape's fill in a path (ECMA-376 part 1, 20.1.10.37).
enum class PathFill : std::uint8_t { None, Normal, Lighten, LightenLess, Darken, DarkenLess };

struct OutlinePath {
  std::vector<PathCommand> commands;
  PathFill fill = PathFill::Normal;
  /// Whether the line is drawn along it.
  bool stroke = true;
};

/// What a geometry gives for one size.
struct Outline {
  std::vector<OutlinePath> paths;
  /// Where the shape's text goes: px from the shape's upper left corner.
  Rect text;
  /// Just the shape's box.
  bool isRectangle = false;
};

/// Adjust values of one shape by name ("adj1"), in the units of its guides (mostly 100,000ths of a side).
using Adjusts = std::vector<std::pair<std::string, double>>;

/// A geometry with the names of its guides resolved; evaluated in one pass.
class Geometry {
 public:
  /// A preset by its a:prstGeom name (20.1.10.56); null when there is none of that name. Compiled once, lives
  /// as long as the program. One thread.
  static const Geometry* preset(std::string_view name);
  /// A compiled a:custGeom (20.1.9.8). What cannot be read is left out; nothing of the node is kept.
  static Geometry custom(pugi::xml_node custGeom);

  /// Width and height in EMU; adjust values that are not given have their defaults. Never fails: a formula
  /// without a value gives 0.
  [[nodiscard]] Outline evaluate(double width, double height, const Adjusts& adjusts) const;

 private:
  friend class GeometryCompiler;
  enum class Op : std::uint8_t {
    MulDiv,
    AddSub,
    AddDiv,
    IfElse,
    Abs,
    Atan2,
    CosAtan2,
    Cos,
    Max,
    Min,
    Mod,
    Pin,
    SinAtan2,
    Sin,
    Sqrt,
    Tan,
    Val
  };
  struct Guide {
    Op op;
    std::uint32_t to;
    std::uint32_t from[3];
  };
  struct Adjust {
    std::string name;
    Guide guide;
  };
  struct Command {
    char op;
    std::uint32_t slots[6];
  };
  struct Path {
    std::vector<Command> commands;
    double width = 0;
    double height = 0;
    PathFill fill = PathFill::Normal;
    bool stroke = true;
  };

  static double compute(const Guide& guide, const std::vector<double>& values);

  std::vector<double> constants_;
  std::vector<Adjust> adjusts_;
  std::vector<Guide> guides_;
  std::uint32_t textRect_[4] = {};
  std::vector<Path> paths_;
  bool isRectangle_ = false;
};

/// The adjust values stated in the a:avLst of a geometry.
Adjusts readAdjusts(pugi::xml_node geometry);

}  // namespace render
