#include "render/scene/SceneBuilder.h"

#include <algorithm>
#include <cmath>

#include "basic/Error.h"
#include "presentationml/ShapeNode.h"
#include "render/geometry/XmlValues.h"
#include "render/paint/EffectReader.h"
#include "render/scene/FrameContent.h"
#include "render/scene/MediaReader.h"
#include "render/scene/ShapeStyle.h"
#include "render/scene/TableReader.h"
#include "render/text/TextFit.h"

// Shapes, pictures, groups and frames as boxes: what each is made of, and in which order it is read.

namespace render {

using presentationml::childByLocalName;
using presentationml::localName;
using presentationml::nonVisualProperties;
using presentationml::placeholder;

namespace {

/// Groups within groups deeper than this are no author's work.
constexpr int DeepestGroup = 256;
/// Points and curves of all outlines of a group; maps of a world have some tens of thousands.
constexpr std::size_t MostCommands = 2000000;
/// Text fitted where it was written; another font may make it a little larger than its shape.
constexpr double AuthoredTolerance = 0.06;

pugi::xml_node geometryIn(pugi::xml_node spPr) {
  for (const auto child : spPr.children()) {
    const auto name = localName(child);
    if (name == "prstGeom" || name == "custGeom") return child;
  }
  return {};
}

void mirror(Rect& area, const Box& box) {
  if (box.flipX) area.x = box.frame.w - area.x - area.w;
  if (box.flipY) area.y = box.frame.h - area.y - area.h;
}

}  // namespace

SceneBuilder::SceneBuilder(Inheritance& inheritance, opc::Part& part, Fields fields)
    : inheritance_(inheritance), part_(part), context_{inheritance.paint(&part), std::move(fields)} {}

std::optional<Box> SceneBuilder::build(pugi::xml_node shape, bool isLive) {
  room_ = MostCommands;
  Space space;
  space.isLive = isLive;
  return build(shape, space);
}

std::optional<Box> SceneBuilder::build(pugi::xml_node node, const Space& space) {
  if (space.depth > DeepestGroup) return {};
  const auto name = localName(node);
  std::optional<Box> box;
  if (name == "sp" || name == "cxnSp") {
    box = shape(node, space);
  } else if (name == "pic") {
    box = picture(node, space);
  } else if (name == "grpSp") {
    box = group(node, space);
  } else if (name == "graphicFrame") {
    box = frame(node, space);
  } else if (name == "AlternateContent") {
    // The first way that draws something; the last resort is what the file offers as such.
    Space inner = space;
    ++inner.depth;
    for (const auto way : node.children()) {
      for (const auto content : way.children()) {
        auto candidate = build(content, inner);
        if (!candidate) continue;
        const bool draws = isVisible(candidate->fill) || candidate->line || candidate->table ||
                           candidate->chart || !candidate->children.empty() || !candidate->text.isEmpty();
        if (draws || !box) box = std::move(candidate);
        if (draws) return box;
      }
    }
    return box;
  } else {
    return {};
  }
  const auto cNvPr = childByLocalName(nonVisualProperties(node), "cNvPr");
  box->id = cNvPr.attribute("id").as_uint();
  box->name = cNvPr.attribute("name").value();
  box->hidden = boolOf(cNvPr.attribute("hidden")).value_or(false);
  return box;
}

void SceneBuilder::outline(Box& box, pugi::xml_node node) {
  const double w = box.frame.w * EmuPerPx;
  const double h = box.frame.h * EmuPerPx;
  if (localName(node) == "custGeom") {
    box.outline = Geometry::custom(node).evaluate(w, h, {});
  } else {
    const Geometry* preset = node ? Geometry::preset(node.attribute("prst").value()) : nullptr;
    if (preset == nullptr) preset = Geometry::preset("rect");
    box.outline = preset->evaluate(w, h, readAdjusts(node));
  }
  // What is stated once may be inherited by all the shapes of a group.
  for (const auto& path : box.outline.paths) {
    if (path.commands.size() > room_)
      throw basic::Error(basic::AdapterError, "render", "its outlines have too many points");
    room_ -= path.commands.size();
  }
  box.textArea = box.outline.text;
  mirror(box.textArea, box);
}

void SceneBuilder::text(Box& box, pugi::xml_node node, pugi::xml_node txBody, const Inherited& inherited) {
  BodyProperties properties = inherited.body;
  properties.apply(txBody.child("a:bodyPr"));
  const auto fontRef = childByLocalName(node, "style").child("a:fontRef");
  const auto color = readChildColor(fontRef, context_.paint.colors);
  if (color || fontRef.attribute("idx")) {
    ListStyle list = inherited.listStyle;
    const std::string_view font = fontRef.attribute("idx").value();
    for (auto& level : list.levels) {
      if (color) level.run.fill = *color;
      if (font == "major") level.run.latin = inheritance_.theme().typeface("+mj-lt");
    }
    box.text = readText(txBody, list, properties, context_);
  } else {
    box.text = readText(txBody, inherited.listStyle, properties, context_);
  }
  if (box.flipY) box.textRotation = 180;
  box.textRotation += properties.rotation;
  if (properties.upright) box.textRotation -= box.rotation;
}

ShapeProperties SceneBuilder::placeAndOutline(Box& box, pugi::xml_node node, const Inherited& inherited,
                                              const Space& space) {
  const ShapeProperties properties = {childByLocalName(node, "spPr"), inherited.layoutShape.child("p:spPr"),
                                      inherited.masterShape.child("p:spPr")};
  pugi::xml_node xfrm;
  pugi::xml_node geometry;
  for (const auto& spPr : properties) {
    if (!xfrm) xfrm = spPr.child("a:xfrm");
    if (!geometry) geometry = geometryIn(spPr);
  }
  place(box, xfrm, space);
  outline(box, geometry);
  return properties;
}

Box SceneBuilder::shape(pugi::xml_node node, const Space& space) {
  Box box;
  const auto ph = placeholder(node);
  const auto& inherited = inheritance_.of(ph);
  const ShapeProperties properties = placeAndOutline(box, node, inherited, space);
  const auto txBody = childByLocalName(node, "txBody");
  text(box, node, txBody, inherited);
  // A placeholder that nobody filled is an invitation to the author, nothing to show.
  const bool empty = ph && box.text.isEmpty();
  const ShapeProperties own = {properties[0], {}, {}};
  readStyle(box, node, empty ? own : properties, inheritance_, context_.paint, space.fill);

  if (const auto txXfrm = childByLocalName(node, "txXfrm")) {
    // In a diagram the text has a frame of its own, in the coordinates of the shape's parent.
    Box area;
    place(area, txXfrm, space);
    box.textArea = {area.frame.x - box.frame.x, area.frame.y - box.frame.y, area.frame.w, area.frame.h};
    box.textRotation += area.rotation;
  }
  fit(box, space.isLive);
  return box;
}

void SceneBuilder::fit(Box& box, bool isLive) {
  const auto& p = box.text.properties;
  if (!p.shrinks || p.direction == TextDirection::Stacked) return;
  double width = box.textArea.w - p.left - p.right;
  double height = box.textArea.h - p.top - p.bottom;
  if (p.direction != TextDirection::Horizontal) std::swap(width, height);
  fitText(box.text, width, height, isLive ? 0 : AuthoredTolerance);
}

Box SceneBuilder::picture(pugi::xml_node node, const Space& space) {
  Box box;
  const auto& inherited = inheritance_.of(placeholder(node));
  const ShapeProperties properties = placeAndOutline(box, node, inherited, space);
  readStyle(box, node, properties, inheritance_, context_.paint, space.fill);
  box.media = readMedia(node, part_, *context_.paint.assets);
  box.under = std::move(box.fill);
  box.fill = NoFill{};
  if (auto image = readPicture(childByLocalName(node, "blipFill"), context_.paint)) {
    image->tile.reset();
    box.fill = std::move(*image);
  } else {
    // Without its picture the frame says nothing.
    box.line.reset();
    box.under = NoFill{};
  }
  return box;
}

void SceneBuilder::readChildren(Box& box, pugi::xml_node tree, const Space& space) {
  for (const auto child : tree.children()) {
    if (auto inner = build(child, space)) {
      if (!inner->hidden) box.children.push_back(std::move(*inner));
    }
  }
}

Box SceneBuilder::group(pugi::xml_node node, const Space& space) {
  Box box;
  const auto grpSpPr = childByLocalName(node, "grpSpPr");
  const auto xfrm = grpSpPr.child("a:xfrm");
  place(box, xfrm, space);
  const double chX = emuOf(xfrm.child("a:chOff").attribute("x")).value_or(0);
  const double chY = emuOf(xfrm.child("a:chOff").attribute("y")).value_or(0);
  const double chCx = emuOf(xfrm.child("a:chExt").attribute("cx")).value_or(0);
  const double chCy = emuOf(xfrm.child("a:chExt").attribute("cy")).value_or(0);
  const auto fill = readFill(grpSpPr, context_.paint, space.fill);
  Space inner;
  inner.offsetX = chX;
  inner.offsetY = chY;
  inner.scaleX = chCx > 0 ? box.frame.w * EmuPerPx / chCx : 1;
  inner.scaleY = chCy > 0 ? box.frame.h * EmuPerPx / chCy : 1;
  inner.width = box.frame.w;
  inner.height = box.frame.h;
  inner.flipX = box.flipX;
  inner.flipY = box.flipY;
  inner.fill = fill ? &*fill : space.fill;
  inner.depth = space.depth + 1;
  inner.isLive = space.isLive;
  readChildren(box, node, inner);
  box.effects = readEffects(effectsIn(grpSpPr), context_.paint, box.rotation);
  box.flipX = box.flipY = false;
  return box;
}

Box SceneBuilder::frame(pugi::xml_node node, const Space& space) {
  Box box;
  place(box, childByLocalName(node, "xfrm"), space);
  const auto data = node.child("a:graphic").child("a:graphicData");
  if (const auto tbl = data.child("a:tbl")) {
    box.table = readTable(tbl, inheritance_, context_);
    return box;
  }
  if (const auto relIds = childByLocalName(data, "relIds")) {
    diagram(box, relIds, space);
    return box;
  }
  if (const auto reference = childByLocalName(data, "chart")) {
    readChart(box, reference, context_.paint);
    return box;
  }
  // An embedded object shows the picture that was made of it.
  const auto preview = data.find_node([](pugi::xml_node n) { return localName(n) == "pic"; });
  if (preview) {
    const auto made = picture(preview, {});
    if (isVisible(made.fill)) {
      const pugi::xml_node none;
      outline(box, none);
      box.fill = made.fill;
    }
  } else if (const Asset* asset = olderPreview(data, context_.paint)) {
    outline(box, {});
    PictureFill image;
    image.asset = asset;
    box.fill = std::move(image);
  }
  return box;
}

void SceneBuilder::diagram(Box& box, pugi::xml_node relIds, const Space& space) {
  opc::Part* drawing = isDiagram_ ? nullptr : diagramDrawing(relIds, part_);
  if (drawing == nullptr) return;
  SceneBuilder builder(inheritance_, *drawing, context_.fields);
  builder.isDiagram_ = true;
  builder.room_ = room_;
  Space inner;
  inner.width = box.frame.w;
  inner.height = box.frame.h;
  inner.depth = space.depth + 1;
  inner.isLive = space.isLive;
  builder.readChildren(box, childByLocalName(drawing->xml().document_element(), "spTree"), inner);
  room_ = builder.room_;
}

std::optional<Fill> SceneBuilder::background() { return readBackground(inheritance_, context_.paint); }

}  // namespace render
