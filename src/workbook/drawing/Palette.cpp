// Colours of a workbook, by index, theme and tint.

#include "workbook/drawing/Palette.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "workbook/book/Xml.h"

namespace workbook {
namespace {

/// 18.8.27; the first eight stand there twice.
constexpr std::array<Rgb, 56> IndexedColors = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000,
    0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF,
    0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000,
    0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696, 0x003366, 0x339966,
    0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};
constexpr std::uint32_t RepeatedColors = 8;

constexpr std::array<std::string_view, 12> ThemeNames = {"lt1",     "dk1",     "lt2",     "dk2",
                                                         "accent1", "accent2", "accent3", "accent4",
                                                         "accent5", "accent6", "hlink",   "folHlink"};
constexpr std::array<Rgb, 12> UsualTheme = {0xFFFFFF, 0x000000, 0xEEECE1, 0x1F497D, 0x4F81BD, 0xC0504D,
                                            0x9BBB59, 0x8064A2, 0x4BACC6, 0xF79646, 0x0000FF, 0x800080};

std::optional<Rgb> parseRgb(std::string_view digits) {
  // Alpha comes first, and says nothing here.
  if (digits.size() == 8) digits.remove_prefix(2);
  if (digits.size() != 6) return std::nullopt;
  Rgb color = 0;
  for (const char c : digits) {
    color <<= 4U;
    if (c >= '0' && c <= '9') {
      color |= static_cast<Rgb>(c - '0');
    } else if ((c | 0x20) >= 'a' && (c | 0x20) <= 'f') {
      color |= static_cast<Rgb>((c | 0x20) - 'a' + 10);
    } else {
      return std::nullopt;
    }
  }
  return color;
}

struct Channels {
  double red, green, blue;
};

/// The luminance of a colour changed (18.8.19, tint), hue and saturation kept.
Rgb tinted(Rgb color, double tint) {
  const Channels c{static_cast<double>(color >> 16U & 255U) / 255,
                   static_cast<double>(color >> 8U & 255U) / 255, static_cast<double>(color & 255U) / 255};
  const double highest = std::max({c.red, c.green, c.blue});
  const double lowest = std::min({c.red, c.green, c.blue});
  const double luminance = (highest + lowest) / 2;
  tint = std::clamp(tint, -1.0, 1.0);
  const double wanted = tint < 0 ? luminance * (1 + tint) : luminance * (1 - tint) + tint;
  const double range = highest - lowest;
  const double saturation = range == 0 ? 0 : range / (1 - std::abs(2 * luminance - 1));
  const double newRange = saturation * (1 - std::abs(2 * wanted - 1));
  const auto channel = [&](double value) {
    // Where a channel lies between the lowest and the highest makes the hue.
    const double place = range == 0 ? 0.5 : (value - lowest) / range;
    const double result = wanted - newRange / 2 + place * newRange;
    return static_cast<Rgb>(std::lround(std::clamp(result, 0.0, 1.0) * 255));
  };
  return channel(c.red) << 16U | channel(c.green) << 8U | channel(c.blue);
}

}  // namespace

Palette::Palette(const Parts& parts, const std::string& themePart) : theme_(UsualTheme) {
  if (themePart.empty()) return;
  const auto document = xml::parse(parts, themePart);
  const pugi::xml_node scheme =
      xml::child(xml::child(document->document_element(), "themeElements"), "clrScheme");
  for (std::size_t i = 0; i < ThemeNames.size(); ++i) {
    const pugi::xml_node color = xml::child(scheme, ThemeNames[i]).first_child();
    const bool isSystem = xml::localName(color.name()) == "sysClr";
    if (const auto rgb = parseRgb(xml::attribute(color, isSystem ? "lastClr" : "val"))) theme_[i] = *rgb;
  }
}

std::optional<Rgb> Palette::indexed(std::uint32_t index) {
  if (index >= RepeatedColors) index -= RepeatedColors;
  if (index >= IndexedColors.size()) return std::nullopt;
  return IndexedColors[index];
}

std::optional<Rgb> Palette::read(pugi::xml_node color) const {
  std::optional<Rgb> rgb;
  if (const auto theme = xml::number(xml::attribute(color, "theme"))) {
    if (*theme < theme_.size()) rgb = theme_[*theme];
  } else if (const auto index = xml::number(xml::attribute(color, "indexed"))) {
    rgb = indexed(*index);
  } else {
    rgb = parseRgb(xml::attribute(color, "rgb"));
  }
  const double tint = color.attribute("tint").as_double();
  return rgb && tint != 0 && std::isfinite(tint) ? std::optional(tinted(*rgb, tint)) : rgb;
}

}  // namespace workbook
