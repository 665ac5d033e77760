#include "render/paint/PaintReader.h"

#include <algorithm>
#include <cmath>

#include "render/geometry/Units.h"
#include "render/geometry/XmlValues.h"
#include "render/paint/EffectReader.h"

// Fills and lines resolved, each element as the schema has it.

namespace render {

namespace {

// Fills and lines are copied to all that inherit them. The program that makes decks offers ten stops, others
// write a few dozen.
constexpr std::size_t MostStops = 256;
constexpr std::size_t MostDashes = 64;

std::array<double, 4> sides(pugi::xml_node rect, double otherwise = 0) {
  static constexpr const char* names[] = {"l", "t", "r", "b"};
  std::array<double, 4> values{};
  for (std::size_t i = 0; i < 4; ++i) values[i] = shareOf(rect.attribute(names[i])).value_or(otherwise);
  return values;
}

std::optional<Fill> readGradient(pugi::xml_node element, const PaintContext& context) {
  Gradient gradient;
  for (const auto gs : element.child("a:gsLst").children("a:gs")) {
    const auto color = readChildColor(gs, context.colors);
    if (!color) continue;
    if (gradient.stops.size() == MostStops) break;
    gradient.stops.push_back({std::clamp(shareOf(gs.attribute("pos")).value_or(0), 0.0, 1.0), *color});
  }
  if (gradient.stops.empty()) return {};
  std::stable_sort(gradient.stops.begin(), gradient.stops.end(),
                   [](const auto& a, const auto& b) { return a.position < b.position; });
  if (gradient.stops.size() == 1) return gradient.stops[0].color;
  if (const auto path = element.child("a:path")) {
    const std::string_view kind = path.attribute("path").value();
    gradient.shape = kind == "circle"  ? Gradient::Shape::Circle
                     : kind == "shape" ? Gradient::Shape::Outline
                                       : Gradient::Shape::Rectangle;
    if (const auto focus = path.child("a:fillToRect")) gradient.focus = sides(focus);
  } else if (const auto lin = element.child("a:lin")) {
    gradient.angle = degreesOf(lin.attribute("ang")).value_or(0);
    gradient.scaled = boolOf(lin.attribute("scaled")).value_or(false);
  }
  if (const auto tile = element.child("a:tileRect")) gradient.tile = sides(tile);
  const std::string_view flip = element.attribute("flip").value();
  gradient.flips = !flip.empty() && flip != "none";
  gradient.turnsWithShape = boolOf(element.attribute("rotWithShape")).value_or(true);
  return gradient;
}

std::optional<Fill> readPattern(pugi::xml_node element, const PaintContext& context) {
  const auto foreground = readChildColor(element.child("a:fgClr"), context.colors).value_or(Color{});
  const auto background =
      readChildColor(element.child("a:bgClr"), context.colors).value_or(Color{1, 1, 1, 1});
  const auto rows = patternRows(element.attribute("prst").value());
  if (!rows) return foreground;
  return PatternFill{*rows, foreground, background};
}

std::vector<double> presetDashes(std::string_view name) {
  if (name == "dot") return {1, 3};
  if (name == "sysDot") return {1, 1};
  if (name == "dash") return {4, 3};
  if (name == "sysDash") return {3, 1};
  if (name == "lgDash") return {8, 3};
  if (name == "dashDot") return {4, 3, 1, 3};
  if (name == "sysDashDot") return {3, 1, 1, 1};
  if (name == "lgDashDot") return {8, 3, 1, 3};
  if (name == "lgDashDotDot") return {8, 3, 1, 3, 1, 3};
  if (name == "sysDashDotDot") return {3, 1, 1, 1, 1, 1};
  return {};
}

LineEnd readEnd(pugi::xml_node node) {
  static constexpr struct {
    std::string_view name;
    LineEnd::Kind kind;
  } kinds[] = {{"triangle", LineEnd::Kind::Triangle},
               {"stealth", LineEnd::Kind::Stealth},
               {"diamond", LineEnd::Kind::Diamond},
               {"oval", LineEnd::Kind::Oval},
               {"arrow", LineEnd::Kind::Arrow}};
  const auto size = [&](const char* key) {
    const std::string_view value = node.attribute(key).value();
    return value == "sm" ? 2.0 : value == "lg" ? 5.0 : 3.0;
  };
  LineEnd end{LineEnd::Kind::None, size("w"), size("len")};
  const std::string_view type = node.attribute("type").value();
  for (const auto& [name, kind] : kinds) {
    if (type == name) end.kind = kind;
  }
  return end;
}

PictureFill::Tile readTile(pugi::xml_node node) {
  PictureFill::Tile tile;
  tile.offsetX = pxFromEmu(emuOf(node.attribute("tx")).value_or(0));
  tile.offsetY = pxFromEmu(emuOf(node.attribute("ty")).value_or(0));
  tile.scaleX = shareOf(node.attribute("sx")).value_or(1);
  tile.scaleY = shareOf(node.attribute("sy")).value_or(1);
  const std::string_view flip = node.attribute("flip").value();
  tile.flipX = flip == "x" || flip == "xy";
  tile.flipY = flip == "y" || flip == "xy";
  const std::string_view align = node.attribute("algn").value();
  tile.alignX = align == "t" || align == "ctr" || align == "b" ? 0.5
                : align.ends_with('r') && align != "ctr"       ? 1
                                                               : 0;
  tile.alignY = align == "l" || align == "ctr" || align == "r" ? 0.5 : align.starts_with('b') ? 1 : 0;
  return tile;
}

const Asset* assetOf(pugi::xml_attribute relationship, const PaintContext& context) {
  opc::Part* part = context.part->target(relationship.value());
  return part != nullptr ? context.assets->add(*part) : nullptr;
}

/// The drawing that newer files keep beside its rendition in pixels is the better picture.
const Asset* pictureOf(pugi::xml_node blip, const PaintContext& context) {
  for (const auto extension : blip.child("a:extLst").children("a:ext")) {
    const auto vector = extension.child("asvg:svgBlip");
    if (!vector) continue;
    if (const Asset* asset = assetOf(vector.attribute("r:embed"), context)) return asset;
  }
  return assetOf(blip.attribute("r:embed"), context);
}

}  // namespace

std::optional<PictureFill> readPicture(pugi::xml_node blipFill, const PaintContext& context) {
  const auto blip = blipFill.child("a:blip");
  if (context.part == nullptr || context.assets == nullptr) return {};
  PictureFill fill;
  fill.asset = pictureOf(blip, context);
  if (fill.asset == nullptr) return {};
  if (const auto crop = blipFill.child("a:srcRect")) fill.crop = sides(crop);
  fill.alpha = std::clamp(shareOf(blip.child("a:alphaModFix").attribute("amt")).value_or(1), 0.0, 1.0);
  fill.effects = readPictureEffects(blip, context);
  if (const auto tile = blipFill.child("a:tile")) {
    fill.tile = readTile(tile);
  } else if (const auto rect = blipFill.child("a:stretch").child("a:fillRect")) {
    fill.inset = sides(rect);
  }
  return fill;
}

std::optional<Fill> readFillElement(pugi::xml_node element, const PaintContext& context,
                                    const Fill* groupFill) {
  const std::string_view name = element.name();
  if (name == "a:noFill") return NoFill{};
  if (name == "a:solidFill") {
    const auto color = readChildColor(element, context.colors);
    return color ? std::optional<Fill>(*color) : std::nullopt;
  }
  if (name == "a:gradFill") return readGradient(element, context);
  if (name == "a:pattFill") return readPattern(element, context);
  if (name == "a:blipFill" || name == "p:blipFill") {
    auto picture = readPicture(element, context);
    return picture ? std::optional<Fill>(std::move(*picture)) : std::optional<Fill>(NoFill{});
  }
  if (name == "a:grpFill") return groupFill != nullptr ? *groupFill : Fill(NoFill{});
  return {};
}

std::optional<Fill> readFill(pugi::xml_node parent, const PaintContext& context, const Fill* groupFill) {
  for (const auto child : parent.children()) {
    if (auto fill = readFillElement(child, context, groupFill)) return fill;
  }
  return {};
}

void applyLine(Line& line, pugi::xml_node ln, const PaintContext& context) {
  if (const auto width = emuOf(ln.attribute("w"))) line.width = std::max(0.0, pxFromEmu(*width));
  const std::string_view cap = ln.attribute("cap").value();
  if (!cap.empty()) line.cap = cap == "rnd" ? Cap::Round : cap == "sq" ? Cap::Square : Cap::Flat;
  const std::string_view compound = ln.attribute("cmpd").value();
  if (!compound.empty()) line.strands = compound == "sng" ? 1 : compound == "tri" ? 3 : 2;
  for (const auto child : ln.children()) {
    const std::string_view name = child.name();
    if (name == "a:prstDash") {
      line.dashes = presetDashes(child.attribute("val").value());
    } else if (name == "a:custDash") {
      line.dashes.clear();
      for (const auto ds : child.children("a:ds")) {
        if (line.dashes.size() >= MostDashes) break;
        line.dashes.push_back(std::max(0.0, shareOf(ds.attribute("d")).value_or(1)));
        line.dashes.push_back(std::max(0.0, shareOf(ds.attribute("sp")).value_or(1)));
      }
    } else if (name == "a:round") {
      line.join = Join::Round;
    } else if (name == "a:bevel") {
      line.join = Join::Bevel;
    } else if (name == "a:miter") {
      line.join = Join::Miter;
    } else if (name == "a:headEnd") {
      line.head = readEnd(child);
    } else if (name == "a:tailEnd") {
      line.tail = readEnd(child);
    } else if (auto fill = readFillElement(child, context)) {
      line.fill = std::move(*fill);
    }
  }
}

}  // namespace render
