#include "render/scene/DumpWords.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "basic/Utf8.h"
#include "render/geometry/Units.h"

// Numbers, texts and paint as words.

namespace render {

namespace {

constexpr std::size_t LongestQuote = 120;  // characters
constexpr std::size_t MostStops = 16;
constexpr std::size_t MostDashes = 16;

std::string hexadecimal(unsigned byte) {
  constexpr std::string_view digits = "0123456789abcdef";
  return {digits[byte >> 4U & 15U], digits[byte & 15U]};
}

std::string sides(const std::array<double, 4>& shares) {
  std::string text;
  for (const double share : shares) text += " " + percent(share);
  return text;
}

bool isSet(const std::array<double, 4>& shares) {
  return std::any_of(shares.begin(), shares.end(), [](double share) { return share != 0; });
}

std::string words(const Gradient& gradient) {
  std::string text;
  switch (gradient.shape) {
    case Gradient::Shape::Linear:
      text = "linear " + number(gradient.angle) + "°" + (gradient.scaled ? " scaled" : "");
      break;
    case Gradient::Shape::Circle:
      text = "circular around" + sides(gradient.focus);
      break;
    case Gradient::Shape::Rectangle:
      text = "rectangular around" + sides(gradient.focus);
      break;
    case Gradient::Shape::Outline:
      text = "along the outline around" + sides(gradient.focus);
      break;
  }
  if (isSet(gradient.tile)) text += " tile" + sides(gradient.tile);
  if (gradient.flips) text += " to and fro";
  if (!gradient.turnsWithShape) text += " staying with the page";
  text += " (";
  const std::size_t shown = std::min(gradient.stops.size(), MostStops);
  for (std::size_t i = 0; i < shown; ++i) {
    if (i > 0) text += ", ";
    text += percent(gradient.stops[i].position) + " " + render::words(gradient.stops[i].color);
  }
  if (shown < gradient.stops.size())
    text += ", " + number(static_cast<double>(gradient.stops.size())) + " in all";
  return text + ")";
}

std::string words(const PictureEffect& effect) {
  using Kind = PictureEffect::Kind;
  const std::string amount = percent(effect.amount);
  switch (effect.kind) {
    case Kind::Grayscale:
      return "grey";
    case Kind::BiLevel:
      return "two levels at " + amount;
    case Kind::Luminance:
      return "brightness " + amount + " contrast " + percent(effect.second);
    case Kind::Duotone:
      return "duotone " + words(effect.color) + " to " + words(effect.other);
    case Kind::ChangeColor:
      return words(effect.color) + " becomes " + words(effect.other);
    case Kind::ReplaceColor:
      return "all becomes " + words(effect.color);
    case Kind::Tint:
      return "tint " + amount + " hue " + number(effect.second) + "°";
    case Kind::Hue:
      return "hue " + number(effect.amount) + "° saturation " + percent(effect.second) + " luminance " +
             percent(effect.third);
    case Kind::Blur:
      return "blur " + points(effect.amount);
    case Kind::AlphaCeiling:
      return "opaque where visible";
    case Kind::AlphaFloor:
      return "clear where not opaque";
    case Kind::AlphaInverse:
      return "opacity inverted";
    case Kind::AlphaBiLevel:
      return "opaque from " + amount;
    case Kind::AlphaReplace:
      return "opacity " + amount + " everywhere";
  }
  return {};
}

std::string words(const PictureFill& fill) {
  std::string text = "picture";
  if (fill.asset != nullptr)
    text += " " + fill.asset->name + " " + points(fill.asset->width) + "x" + points(fill.asset->height);
  if (isSet(fill.crop)) text += " cropped" + sides(fill.crop);
  if (isSet(fill.inset)) text += " inset" + sides(fill.inset);
  if (fill.tile) {
    const auto& tile = *fill.tile;
    text += " tiled " + percent(tile.scaleX) + " " + percent(tile.scaleY) + " moved " + points(tile.offsetX) +
            "," + points(tile.offsetY) + " from " + percent(tile.alignX) + " " + percent(tile.alignY);
    if (tile.flipX) text += " flipped x";
    if (tile.flipY) text += " flipped y";
  }
  if (fill.alpha != 1) text += " opacity " + percent(fill.alpha);
  for (const auto& effect : fill.effects) text += ", " + words(effect);
  return text;
}

std::string words(const PatternFill& fill) {
  std::string text = "pattern ";
  for (const std::uint8_t row : fill.rows) text += hexadecimal(row);
  return text + " " + render::words(fill.foreground) + " on " + render::words(fill.background);
}

std::string words(NoFill /*fill*/) { return "none"; }

std::string words(const LineEnd& end) {
  static constexpr std::string_view kinds[] = {"none", "triangle", "stealth", "diamond", "oval", "arrow"};
  return std::string(kinds[static_cast<std::size_t>(end.kind)]) + " " + number(end.width) + "x" +
         number(end.length);
}

}  // namespace

std::string number(double value) {
  if (!std::isfinite(value)) return "-";
  char digits[64];
  const double rounded = std::round(std::clamp(value, -1e12, 1e12) * 100) / 100 + 0.0;
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, rounded, std::chars_format::fixed);
  return {digits, end};
}

std::string points(double px) { return number(px / PxPerPoint); }

std::string area(const Rect& px) {
  return points(px.x) + "," + points(px.y) + " " + points(px.w) + "x" + points(px.h);
}

std::string percent(double share) { return number(share * 100) + "%"; }

std::string inQuotes(std::string_view text) {
  std::string out = "\"";
  std::size_t characters = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (++characters > LongestQuote) return out + "…\"";
    const char32_t c = basic::DecodeUtf8(text, at);
    if (c == '"' || c == '\\') out += '\\';
    if (c == '\t') {
      out += "\\t";
    } else if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
      out += "\\x" + hexadecimal(c);
    } else {
      basic::AppendUtf8(out, c);
    }
  }
  return out + "\"";
}

std::string words(const Color& color) {
  std::string text = "#";
  for (const double channel : {color.r, color.g, color.b}) {
    text += hexadecimal(static_cast<unsigned>(std::lround(std::clamp(channel, 0.0, 1.0) * 255)));
  }
  return color.a < 1 ? text + "/" + percent(color.a) : text;
}

std::string words(const Fill& fill) {
  return std::visit([](const auto& kind) { return words(kind); }, fill);
}

std::string words(const Line& line) {
  std::string text = points(line.width) + " " + words(line.fill);
  if (!line.dashes.empty()) text += " dashed";
  for (std::size_t i = 0; i < std::min(line.dashes.size(), MostDashes); ++i)
    text += " " + number(line.dashes[i]);
  if (line.cap != Cap::Flat) text += line.cap == Cap::Round ? " round caps" : " square caps";
  if (line.join != Join::Round) text += line.join == Join::Bevel ? " bevelled" : " mitred";
  if (line.strands != 1) text += " " + number(line.strands) + " strands";
  if (line.head.kind != LineEnd::Kind::None) text += " head " + words(line.head);
  if (line.tail.kind != LineEnd::Kind::None) text += " tail " + words(line.tail);
  return text;
}

void DumpLines::add(int depth, std::string_view line) {
  const std::size_t indent = 2 * static_cast<std::size_t>(depth);
  if (isFull_ || text_.size() + indent + line.size() + 1 > Most) {
    isFull_ = true;
    return;
  }
  text_.append(indent, ' ');
  text_ += line;
  text_ += '\n';
}

std::string DumpLines::take() {
  if (isFull_) text_ += "(the rest is left out: the scene is too large)\n";
  return std::move(text_);
}

}  // namespace render
