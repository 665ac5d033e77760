#include "render/paint/EffectReader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/geometry/Units.h"
#include "render/geometry/XmlValues.h"

// Shadows, glows, reflections and what else is stated of effects, in px and bounded.

namespace render {

namespace {

/// Wider ones are no author's and cost a browser much.
constexpr double WidestBlur = 400;

double lengthOf(pugi::xml_attribute attribute) {
  return std::clamp(pxFromEmu(emuOf(attribute).value_or(0)), 0.0, WidestBlur);
}

double alphaOf(pugi::xml_attribute attribute, double otherwise) {
  return std::clamp(shareOf(attribute).value_or(otherwise), 0.0, 1.0);
}

/// Direction and distance; `turned` is the shape's rotation where the effect keeps the page's.
void readOffset(pugi::xml_node node, Displacement& displacement, double turned) {
  const double distance = pxFromEmu(emuOf(node.attribute("dist")).value_or(0));
  const double degrees = degreesOf(node.attribute("dir")).value_or(0) - turned;
  displacement.dx = distance * std::cos(degrees * std::numbers::pi / 180);
  displacement.dy = distance * std::sin(degrees * std::numbers::pi / 180);
}

void readDisplacement(pugi::xml_node node, Displacement& displacement, double turned) {
  const bool turns = boolOf(node.attribute("rotWithShape")).value_or(true);
  readOffset(node, displacement, turns ? 0 : turned);
  displacement.scaleX = shareOf(node.attribute("sx")).value_or(1);
  displacement.scaleY = shareOf(node.attribute("sy")).value_or(1);
  displacement.skewX = std::clamp(degreesOf(node.attribute("kx")).value_or(0), -85.0, 85.0);
  displacement.skewY = std::clamp(degreesOf(node.attribute("ky")).value_or(0), -85.0, 85.0);
  const std::string_view align = node.attribute("algn").value();
  if (align.empty()) return;
  const bool isCentre = align == "ctr";
  displacement.alignX = isCentre || align == "t" || align == "b" ? 0.5 : align.ends_with('l') ? 0 : 1;
  displacement.alignY = isCentre || align == "l" || align == "r" ? 0.5 : align.starts_with('t') ? 0 : 1;
}

std::optional<Shadow> readInnerShadow(pugi::xml_node node, const PaintContext& context) {
  const auto color = readChildColor(node, context.colors);
  if (!color) return {};
  Shadow shadow;
  shadow.color = *color;
  shadow.blur = lengthOf(node.attribute("blurRad"));
  readOffset(node, shadow, 0);
  return shadow;
}

Reflection readReflection(pugi::xml_node node, double turned) {
  Reflection reflection;
  reflection.blur = lengthOf(node.attribute("blurRad"));
  reflection.startAlpha = alphaOf(node.attribute("stA"), 1);
  reflection.startPosition = alphaOf(node.attribute("stPos"), 0);
  reflection.endAlpha = alphaOf(node.attribute("endA"), 0);
  reflection.endPosition = alphaOf(node.attribute("endPos"), 1);
  readDisplacement(node, reflection, turned);
  return reflection;
}

std::optional<Shadow> readShadow(pugi::xml_node effects, const PaintContext& context, double turned) {
  auto node = effects.child("a:outerShdw");
  if (!node) node = effects.child("a:prstShdw");
  const auto color = readChildColor(node, context.colors);
  if (!color) return {};
  Shadow shadow;
  shadow.color = *color;
  shadow.blur = lengthOf(node.attribute("blurRad"));
  readDisplacement(node, shadow, turned);
  return shadow;
}

}  // namespace

Effects readEffects(pugi::xml_node node, const PaintContext& context, double turned) {
  Effects effects;
  effects.shadow = readShadow(node, context, turned);
  effects.innerShadow = readInnerShadow(node.child("a:innerShdw"), context);
  if (const auto glow = node.child("a:glow")) {
    const auto color = readChildColor(glow, context.colors);
    const double radius = lengthOf(glow.attribute("rad"));
    if (color && radius > 0) effects.glow = Glow{radius, *color};
  }
  if (const auto reflection = node.child("a:reflection"))
    effects.reflection = readReflection(reflection, turned);
  effects.softEdge = lengthOf(node.child("a:softEdge").attribute("rad"));
  effects.blur = lengthOf(node.child("a:blur").attribute("rad"));
  return effects;
}

std::optional<Overlay> readOverlay(pugi::xml_node effects, const PaintContext& context) {
  static constexpr std::pair<std::string_view, const char*> modes[] = {
      {"mult", "multiply"}, {"screen", "screen"}, {"darken", "darken"}, {"lighten", "lighten"}};
  const auto stated = effects.child("a:fillOverlay");
  auto fill = readFill(stated, context);
  if (!fill || !isVisible(*fill)) return {};
  Overlay overlay{std::move(*fill)};
  for (const auto& [name, blending] : modes) {
    if (name == stated.attribute("blend").value()) overlay.blending = blending;
  }
  return overlay;
}

std::optional<Bevel> readBevel(pugi::xml_node sp3d) {
  const auto top = sp3d.child("a:bevelT");
  if (!top) return {};
  const double width = std::min(pxFromEmu(emuOf(top.attribute("w")).value_or(76200)), WidestBlur);
  const double height = pxFromEmu(emuOf(top.attribute("h")).value_or(76200));
  if (width <= 0 || height <= 0) return {};
  return Bevel{width};
}

std::vector<PictureEffect> readPictureEffects(pugi::xml_node blip, const PaintContext& context) {
  using Kind = PictureEffect::Kind;
  std::vector<PictureEffect> effects;
  const auto share = [](pugi::xml_node node, const char* name, double otherwise = 0) {
    return std::clamp(shareOf(node.attribute(name)).value_or(otherwise), -1.0, 1.0);
  };
  const auto color = [&](pugi::xml_node node) {
    return readChildColor(node, context.colors).value_or(Color{});
  };
  for (const auto node : blip.children()) {
    const std::string_view name = node.name();
    PictureEffect effect;
    if (name == "a:grayscl") {
      effect.kind = Kind::Grayscale;
    } else if (name == "a:biLevel") {
      effect = {.kind = Kind::BiLevel, .amount = share(node, "thresh", 0.5)};
    } else if (name == "a:lum") {
      effect = {.kind = Kind::Luminance, .amount = share(node, "bright"), .second = share(node, "contrast")};
      if (effect.amount == 0 && effect.second == 0) continue;
    } else if (name == "a:duotone") {
      std::vector<Color> colors;
      for (const auto child : node.children()) {
        if (const auto read = readColor(child, context.colors)) colors.push_back(*read);
      }
      if (colors.size() != 2) continue;
      effect = {.kind = Kind::Duotone, .color = colors[0], .other = colors[1]};
    } else if (name == "a:clrChange") {
      effect = {.kind = Kind::ChangeColor,
                .color = color(node.child("a:clrFrom")),
                .other = color(node.child("a:clrTo"))};
    } else if (name == "a:clrRepl") {
      effect = {.kind = Kind::ReplaceColor, .color = color(node)};
    } else if (name == "a:tint") {
      effect = {.kind = Kind::Tint, .amount = std::max(0.0, share(node, "amt"))};
      effect.second = degreesOf(node.attribute("hue")).value_or(0);
    } else if (name == "a:hsl") {
      effect = {.kind = Kind::Hue,
                .amount = degreesOf(node.attribute("hue")).value_or(0),
                .second = share(node, "sat"),
                .third = share(node, "lum")};
    } else if (name == "a:blur") {
      effect = {.kind = Kind::Blur, .amount = lengthOf(node.attribute("rad"))};
    } else if (name == "a:alphaCeiling") {
      effect.kind = Kind::AlphaCeiling;
    } else if (name == "a:alphaFloor") {
      effect.kind = Kind::AlphaFloor;
    } else if (name == "a:alphaInv") {
      effect.kind = Kind::AlphaInverse;
    } else if (name == "a:alphaBiLevel") {
      effect = {.kind = Kind::AlphaBiLevel, .amount = share(node, "thresh", 0.5)};
    } else if (name == "a:alphaRepl") {
      effect = {.kind = Kind::AlphaReplace, .amount = std::max(0.0, share(node, "a", 1))};
    } else {
      continue;
    }
    effects.push_back(effect);
  }
  return effects;
}

}  // namespace render
