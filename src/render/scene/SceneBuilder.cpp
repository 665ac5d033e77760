#include "render/scene/SceneBuilder.h"

#include <algorithm>
#include <cmath>

#include "basic/Error.h"
#include "render/chart/ChartReader.h"
#include "render/geometry/XmlValues.h"
#include "render/paint/EffectReader.h"
#include "render/scene/MediaReader.h"
#include "render/scene/TableReader.h"
#include "render/text/TextFit.h"

namespace render {

namespace {

/// Groups within groups deeper than this are no author's work.
constexpr int DeepestGroup = 256;
/// Points and curves of all outlines of a group; maps of a world have some tens of thousands.
constexpr std::size_t MostCommands = 2000000;
/// Radius of a chart's rounded corners, px.
constexpr double ChartCorner = 10;

/// Text fitted where it was written; another font may make it a little larger than its shape.
constexpr double AuthoredTolerance = 0.06;

std::string_view localName(pugi::xml_node node) {
  const std::string_view name = node.name();
  const auto colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// By name without prefix: shapes of a diagram's drawing are built as a slide's.
pugi::xml_node childNamed(pugi::xml_node node, std::string_view name) {
  for (const auto child : node.children()) {
    if (localName(child) == name) return child;
  }
  return {};
}

pugi::xml_node nonVisual(pugi::xml_node shape) {
  for (const auto child : shape.children()) {
    if (localName(child).starts_with("nv")) return child;
  }
  return {};
}

pugi::xml_node placeholderOf(pugi::xml_node shape) { return nonVisual(shape).child("p:nvPr").child("p:ph"); }

int styleIndex(pugi::xml_node reference) {
  return wholeOf(reference.attribute("idx"), 0, 0, LargestStyleIndex);
}

pugi::xml_node geometryIn(pugi::xml_node spPr) {
  for (const auto child : spPr.children()) {
    const auto name = localName(child);
    if (name == "prstGeom" || name == "custGeom") return child;
  }
  return {};
}

pugi::xml_node effectsIn(pugi::xml_node properties) {
  const auto list = properties.child("a:effectLst");
  return list ? list : properties.child("a:effectDag");
}

/// Turned by 45 degrees or more, a shape's width runs along the other axis.
bool isSideways(double degrees) {
  const double turned = std::fmod(std::fmod(degrees, 180) + 180, 180);
  return turned >= 45 && turned < 135;
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
  const auto cNvPr = childNamed(nonVisual(node), "cNvPr");
  box->id = cNvPr.attribute("id").as_uint();
  box->name = cNvPr.attribute("name").value();
  box->hidden = boolOf(cNvPr.attribute("hidden")).value_or(false);
  return box;
}

void SceneBuilder::place(Box& box, pugi::xml_node xfrm, const Space& space) {
  const auto off = xfrm.child("a:off");
  const auto ext = xfrm.child("a:ext");
  const double x = emuOf(off.attribute("x")).value_or(0);
  const double y = emuOf(off.attribute("y")).value_or(0);
  const double cx = std::max(0.0, emuOf(ext.attribute("cx")).value_or(0));
  const double cy = std::max(0.0, emuOf(ext.attribute("cy")).value_or(0));
  box.rotation = degreesOf(xfrm.attribute("rot")).value_or(0);
  box.flipX = boolOf(xfrm.attribute("flipH")).value_or(false);
  box.flipY = boolOf(xfrm.attribute("flipV")).value_or(false);
  const bool sideways = isSideways(box.rotation);
  const double w = pxFromEmu(cx * (sideways ? space.scaleY : space.scaleX));
  const double h = pxFromEmu(cy * (sideways ? space.scaleX : space.scaleY));
  const double centreX = pxFromEmu((x + cx / 2 - space.offsetX) * space.scaleX);
  const double centreY = pxFromEmu((y + cy / 2 - space.offsetY) * space.scaleY);
  box.frame = {centreX - w / 2, centreY - h / 2, w, h};
  if (space.flipX) {
    box.frame.x = space.width - box.frame.x - w;
    box.flipX = !box.flipX;
  }
  if (space.flipY) {
    box.frame.y = space.height - box.frame.y - h;
    box.flipY = !box.flipY;
  }
  if (space.flipX != space.flipY) box.rotation = -box.rotation;
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

PaintContext SceneBuilder::themeContext(pugi::xml_node reference) const {
  auto paint = inheritance_.paint(inheritance_.themePart());
  paint.colors.placeholder = readChildColor(reference, paint.colors);
  return paint;
}

void SceneBuilder::style(Box& box, pugi::xml_node node, const pugi::xml_node (&properties)[3],
                         const Space& space) {
  const auto styles = childNamed(node, "style");
  const auto fillRef = styles.child("a:fillRef");
  const auto lineRef = styles.child("a:lnRef");
  const auto effectRef = styles.child("a:effectRef");
  const auto& theme = inheritance_.theme();
  opc::Part* const parts[] = {&part_, inheritance_.layout(), inheritance_.master()};

  const auto context = [&](int i) {
    auto paint = context_.paint;
    paint.part = parts[i];
    return paint;
  };
  // What the shape's own style names goes before all that its placeholder inherits.
  auto fill = readFill(properties[0], context(0), space.fill);
  if (!fill && styleIndex(fillRef) > 0) {
    fill = readFillElement(theme.fill(styleIndex(fillRef)), themeContext(fillRef));
  }
  for (int i = 1; i < 3 && !fill; ++i) fill = readFill(properties[i], context(i), space.fill);
  if (fill) box.fill = std::move(*fill);

  std::optional<Line> line;
  pugi::xml_node effects;
  auto paint = context_.paint;
  pugi::xml_node threeD;
  const auto take = [&](int i) {
    if (const auto ln = properties[i].child("a:ln")) applyLine(line ? *line : line.emplace(), ln, context(i));
    if (const auto own = effectsIn(properties[i])) {
      effects = own;
      paint = context(i);
    }
    if (const auto own = properties[i].child("a:sp3d")) threeD = own;
  };
  take(2);
  take(1);
  if (styleIndex(lineRef) > 0)
    applyLine(line.emplace(), theme.line(styleIndex(lineRef)), themeContext(lineRef));
  const auto named = theme.effect(styleIndex(effectRef));
  if (const auto list = effectsIn(named)) {
    effects = list;
    paint = themeContext(effectRef);
  }
  if (const auto solid = named.child("a:sp3d")) threeD = solid;
  take(0);
  if (line && isVisible(line->fill)) box.line = std::move(line);
  box.effects = readEffects(effects, paint, box.rotation);
  box.effects.bevel = readBevel(threeD);
  box.overlay = readOverlay(effects, paint);
}

void SceneBuilder::text(Box& box, pugi::xml_node node, pugi::xml_node txBody, const Inherited& inherited) {
  BodyProperties properties = inherited.body;
  properties.apply(txBody.child("a:bodyPr"));
  const auto fontRef = childNamed(node, "style").child("a:fontRef");
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

Box SceneBuilder::shape(pugi::xml_node node, const Space& space) {
  Box box;
  const auto ph = placeholderOf(node);
  const auto& inherited = inheritance_.of(ph);
  const pugi::xml_node properties[3] = {childNamed(node, "spPr"), inherited.layoutShape.child("p:spPr"),
                                        inherited.masterShape.child("p:spPr")};
  pugi::xml_node xfrm;
  pugi::xml_node geometry;
  for (const auto& spPr : properties) {
    if (!xfrm) xfrm = spPr.child("a:xfrm");
    if (!geometry) geometry = geometryIn(spPr);
  }
  place(box, xfrm, space);
  outline(box, geometry);
  const auto txBody = childNamed(node, "txBody");
  text(box, node, txBody, inherited);
  // A placeholder that nobody filled is an invitation to the author, nothing to show.
  const bool empty = ph && box.text.isEmpty();
  const pugi::xml_node own[3] = {properties[0], {}, {}};
  style(box, node, empty ? own : properties, space);

  if (const auto txXfrm = childNamed(node, "txXfrm")) {
    // In a diagram the text has a frame of its own, in the coordinates of the shape's parent.
    Box frame;
    place(frame, txXfrm, space);
    box.textArea = {frame.frame.x - box.frame.x, frame.frame.y - box.frame.y, frame.frame.w, frame.frame.h};
    box.textRotation += frame.rotation;
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
  const auto& inherited = inheritance_.of(placeholderOf(node));
  const pugi::xml_node properties[3] = {childNamed(node, "spPr"), inherited.layoutShape.child("p:spPr"),
                                        inherited.masterShape.child("p:spPr")};
  pugi::xml_node xfrm;
  pugi::xml_node geometry;
  for (const auto& spPr : properties) {
    if (!xfrm) xfrm = spPr.child("a:xfrm");
    if (!geometry) geometry = geometryIn(spPr);
  }
  place(box, xfrm, space);
  outline(box, geometry);
  style(box, node, properties, space);
  box.media = readMedia(node, part_, *context_.paint.assets);
  box.under = std::move(box.fill);
  box.fill = NoFill{};
  if (auto image = readPicture(childNamed(node, "blipFill"), context_.paint)) {
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
  const auto grpSpPr = childNamed(node, "grpSpPr");
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
  place(box, childNamed(node, "xfrm"), space);
  const auto data = node.child("a:graphic").child("a:graphicData");
  if (const auto tbl = data.child("a:tbl")) {
    box.table = readTable(tbl, inheritance_, context_);
    return box;
  }
  if (const auto relIds = childNamed(data, "relIds")) {
    diagram(box, relIds, space);
    return box;
  }
  if (const auto reference = childNamed(data, "chart")) {
    chart(box, reference);
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
  } else if (const Asset* asset = olderPreview(data)) {
    outline(box, {});
    PictureFill image;
    image.asset = asset;
    box.fill = std::move(image);
  }
  return box;
}

/// Older files have an embedded object's preview in a drawing of VML (ECMA-376 part 4, 14).
const Asset* SceneBuilder::olderPreview(pugi::xml_node data) {
  const auto object =
      data.find_node([](pugi::xml_node n) { return localName(n) == "oleObj" && n.attribute("spid"); });
  const std::string_view name = object.attribute("spid").value();
  opc::Part* drawing = name.empty() ? nullptr : part_.related("vmlDrawing");
  if (drawing == nullptr) return nullptr;
  const auto shape = drawing->xml().find_node([&](pugi::xml_node n) {
    return localName(n) == "shape" &&
           (n.attribute("id").value() == name || n.attribute("o:spid").value() == name);
  });
  opc::Part* image = drawing->target(shape.child("v:imagedata").attribute("o:relid").value());
  return image != nullptr ? context_.paint.assets->add(*image) : nullptr;
}

void SceneBuilder::chart(Box& box, pugi::xml_node reference) {
  opc::Part* part = part_.target(reference.attribute("r:id").value());
  // Kinds of later editions live in parts of their own; the file has a picture for those.
  if (part == nullptr || localName(part->xml().document_element()) != "chartSpace") return;
  if (!part->xml().document_element().child("c:chart")) return;
  auto model = ChartReader(*part, context_.paint).read();
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

void SceneBuilder::diagram(Box& box, pugi::xml_node relIds, const Space& space) {
  opc::Part* drawing = nullptr;
  if (opc::Part* data = part_.target(relIds.attribute("r:dm").value())) {
    const auto model = data->xml().find_node([](pugi::xml_node n) { return localName(n) == "dataModelExt"; });
    drawing = part_.target(model.attribute("relId").value());
  }
  if (drawing == nullptr) drawing = part_.related("diagramDrawing");
  if (drawing == nullptr || isDiagram_) return;
  SceneBuilder builder(inheritance_, *drawing, context_.fields);
  builder.isDiagram_ = true;
  builder.room_ = room_;
  Space inner;
  inner.width = box.frame.w;
  inner.height = box.frame.h;
  inner.depth = space.depth + 1;
  inner.isLive = space.isLive;
  builder.readChildren(box, childNamed(drawing->xml().document_element(), "spTree"), inner);
  room_ = builder.room_;
}

std::optional<Fill> SceneBuilder::background() {
  const auto bg = part_.xml().document_element().child("p:cSld").child("p:bg");
  if (const auto properties = bg.child("p:bgPr")) return readFill(properties, context_.paint);
  if (const auto reference = bg.child("p:bgRef")) {
    const auto theme = themeContext(reference);
    auto fill = readFillElement(inheritance_.theme().fill(styleIndex(reference)), theme);
    if (!fill && theme.colors.placeholder) fill = *theme.colors.placeholder;
    return fill;
  }
  return {};
}

}  // namespace render
