#pragma once

#include <pugixml.hpp>

#include "render/paint/PaintReader.h"
#include "render/scene/Scene.h"

// What a p:graphicFrame refers to. `paint` resolves the elements of the part that holds the frame.

namespace render {

/// The chart that a c:chart names. Nothing of the box changes when the part is none: kinds of later editions
/// live in parts of their own, and the file has a picture for those.
void readChart(Box& box, pugi::xml_node reference, const PaintContext& paint);

/// The drawing that the file keeps of a diagram, by its dgm:relIds; null when it has none.
opc::Part* diagramDrawing(pugi::xml_node relIds, opc::Part& part);

/// The picture of an embedded object in the a:graphicData of older files, which have it in a drawing of VML
/// (ECMA-376 part 4, 14); null without one.
const Asset* olderPreview(pugi::xml_node data, const PaintContext& paint);

}  // namespace render
