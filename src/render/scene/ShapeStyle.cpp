#include "render/scene/ShapeStyle.h"

#include "presentationml/ShapeNode.h"
#include "render/geometry/XmlValues.h"
#include "render/paint/EffectReader.h"

// What shapes and backgrounds look like, of what they state and what they name in the theme.

namespace render {

namespace {

int styleIndex(pugi::xml_node reference) {
  return wholeOf(reference.attribute("idx"), 0, 0, LargestStyleIndex);
}

/// For what the theme has under a reference: the reference's colour is the placeholder of its elements.
PaintContext themePaint(const Inheritance& inheritance, pugi::xml_node reference) {
  auto paint = inheritance.paint(inheritance.themePart());
  paint.colors.placeholder = readChildColor(reference, paint.colors);
  return paint;
}

}  // namespace

pugi::xml_node effectsIn(pugi::xml_node properties) {
  const auto list = properties.child("a:effectLst");
  return list ? list : properties.child("a:effectDag");
}

void readStyle(Box& box, pugi::xml_node shape, const ShapeProperties& properties,
               const Inheritance& inheritance, const PaintContext& own, const Fill* groupFill) {
  const auto styles = presentationml::childByLocalName(shape, "style");
  const auto fillRef = styles.child("a:fillRef");
  const auto lineRef = styles.child("a:lnRef");
  const auto effectRef = styles.child("a:effectRef");
  const auto& theme = inheritance.theme();
  opc::Part* const parts[] = {own.part, inheritance.layout(), inheritance.master()};

  const auto context = [&](std::size_t i) {
    auto paint = own;
    paint.part = parts[i];
    return paint;
  };
  // What the shape's own style names goes before all that its placeholder inherits.
  auto fill = readFill(properties[0], context(0), groupFill);
  if (!fill && styleIndex(fillRef) > 0) {
    fill = readFillElement(theme.fill(styleIndex(fillRef)), themePaint(inheritance, fillRef));
  }
  for (std::size_t i = 1; i < 3 && !fill; ++i) fill = readFill(properties[i], context(i), groupFill);
  if (fill) box.fill = std::move(*fill);

  std::optional<Line> line;
  pugi::xml_node effects;
  auto paint = own;
  pugi::xml_node threeD;
  const auto take = [&](std::size_t i) {
    if (const auto ln = properties[i].child("a:ln")) applyLine(line ? *line : line.emplace(), ln, context(i));
    if (const auto stated = effectsIn(properties[i])) {
      effects = stated;
      paint = context(i);
    }
    if (const auto stated = properties[i].child("a:sp3d")) threeD = stated;
  };
  take(2);
  take(1);
  if (styleIndex(lineRef) > 0)
    applyLine(line.emplace(), theme.line(styleIndex(lineRef)), themePaint(inheritance, lineRef));
  const auto named = theme.effect(styleIndex(effectRef));
  if (const auto list = effectsIn(named)) {
    effects = list;
    paint = themePaint(inheritance, effectRef);
  }
  if (const auto solid = named.child("a:sp3d")) threeD = solid;
  take(0);
  if (line && isVisible(line->fill)) box.line = std::move(line);
  box.effects = readEffects(effects, paint, box.rotation);
  box.effects.bevel = readBevel(threeD);
  box.overlay = readOverlay(effects, paint);
}

std::optional<Fill> readBackground(const Inheritance& inheritance, const PaintContext& own) {
  const auto bg = own.part->xml().document_element().child("p:cSld").child("p:bg");
  if (const auto properties = bg.child("p:bgPr")) return readFill(properties, own);
  if (const auto reference = bg.child("p:bgRef")) {
    const auto theme = themePaint(inheritance, reference);
    auto fill = readFillElement(inheritance.theme().fill(styleIndex(reference)), theme);
    if (!fill && theme.colors.placeholder) fill = *theme.colors.placeholder;
    return fill;
  }
  return {};
}

}  // namespace render
