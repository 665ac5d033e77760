#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "render/geometry/Geometry.h"
#include "render/geometry/PresetTable.h"

namespace render {

/// Turns one geometry's text into slots and operations (guides: ECMA-376 part 1, 20.1.9.11). Use it once.
class GeometryCompiler {
 public:
  GeometryCompiler();

  /// Names that are neither guides nor numbers count as 0; formulas and commands that are none are left out.
  Geometry compile(const PresetText& preset);
  Geometry compile(pugi::xml_node custGeom);

  /// The guides every shape has, in the order of their slots.
  enum Builtin : std::uint32_t {
    L,
    T,
    R,
    B,
    W,
    H,
    HC,
    VC,
    SS,
    LS,
    WD2,
    WD3,
    WD4,
    WD5,
    WD6,
    WD8,
    WD10,
    WD12,
    WD32,
    HD2,
    HD3,
    HD4,
    HD5,
    HD6,
    HD8,
    HD10,
    HD12,
    HD32,
    SSD2,
    SSD4,
    SSD6,
    SSD8,
    SSD16,
    SSD32,
    CD2,
    CD4,
    CD8,
    CD3_4,
    CD3_8,
    CD5_8,
    CD7_8,
    BuiltinCount
  };

 private:
  std::uint32_t slot(std::string_view operand);
  std::uint32_t define(std::string_view name);
  /// False when the formula is none.
  bool guide(std::string_view name, std::string_view formula, Geometry::Guide& out);
  void finish();

  Geometry geometry_;
  std::unordered_map<std::string, std::uint32_t> slots_;
};

}  // namespace render
