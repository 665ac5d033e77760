#include "render/scene/FrameContent.h"

#include <algorithm>

#include "presentationml/ShapeNode.h"
#include "render/chart/ChartReader.h"

namespace render {

using presentationml::localName;

namespace {

/// Radius of a chart's rounded corners, px.
constexpr double ChartCorner = 10;

}  // namespace

void readChart(Box& box, pugi::xml_node reference, const PaintContext& paint) {
  opc::Part* part = paint.part->target(reference.attribute("r:id").value());
  if (part == nullptr || localName(part->xml().document_element()) != "chartSpace") return;
  if (!part->xml().document_element().child("c:chart")) return;
  auto model = ChartReader(*part, paint).read();
  Adjusts adjusts;
  if (model.hasRoundedCorners) {
    adjusts.emplace_back("adj", ChartCorner / std::max(1.0, std::min(box.frame.w, box.frame.h)) * 100000);
  }
  box.outline = Geometry::preset(model.hasRoundedCorners ? "roundRect" : "rect")
                    ->evaluate(box.frame.w * EmuPerPx, box.frame.h * EmuPerPx, adjusts);
  box.fill = model.area.fill;
  box.line = model.area.line;
  box.chart = std::make_shared<const ChartModel>(std::move(model));
}

opc::Part* diagramDrawing(pugi::xml_node relIds, opc::Part& part) {
  if (opc::Part* data = part.target(relIds.attribute("r:dm").value())) {
    const auto model = data->xml().find_node([](pugi::xml_node n) { return localName(n) == "dataModelExt"; });
    if (opc::Part* drawing = part.target(model.attribute("relId").value())) return drawing;
  }
  return part.related("diagramDrawing");
}

const Asset* olderPreview(pugi::xml_node data, const PaintContext& paint) {
  const auto object =
      data.find_node([](pugi::xml_node n) { return localName(n) == "oleObj" && n.attribute("spid"); });
  const std::string_view name = object.attribute("spid").value();
  opc::Part* drawing = name.empty() ? nullptr : paint.part->related("vmlDrawing");
  if (drawing == nullptr) return nullptr;
  const auto shape = drawing->xml().find_node([&](pugi::xml_node n) {
    return localName(n) == "shape" &&
           (n.attribute("id").value() == name || n.attribute("o:spid").value() == name);
  });
  opc::Part* image = drawing->target(shape.child("v:imagedata").attribute("o:relid").value());
  return image != nullptr ? paint.assets->add(*image) : nullptr;
}

}  // namespace render
