#pragma once

#include <array>
#include <optional>
#include <pugixml.hpp>

#include "render/paint/PaintReader.h"
#include "render/scene/Inheritance.h"
#include "render/scene/Scene.h"

namespace render {

/// The p:spPr of a shape, of its placeholder on the layout and of that on the master; null nodes where there
/// is none.
using ShapeProperties = std::array<pugi::xml_node, 3>;

/// Sets fill, line, effects and overlay of a box. What the shape states itself goes before what its style
/// (p:style, ECMA-376 part 1, 19.3.1.46) names in the theme, and that before what its placeholder inherits.
/// `own` resolves the shape's elements; `groupFill` stands for a:grpFill and may be null.
void readStyle(Box& box, pugi::xml_node shape, const ShapeProperties& properties,
               const Inheritance& inheritance, const PaintContext& own, const Fill* groupFill);

/// a:effectLst or a:effectDag among the children of a shape's or group's properties.
pugi::xml_node effectsIn(pugi::xml_node properties);

/// The background that the slide, layout or master of `own` states itself (p:bg).
std::optional<Fill> readBackground(const Inheritance& inheritance, const PaintContext& own);

}  // namespace render
