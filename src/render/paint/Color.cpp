#include "render/paint/Color.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "render/geometry/XmlValues.h"

// Colours resolved: names through map and scheme, then transforms in the order of the file.

namespace render {

namespace {

double clamp01(double v) { return std::clamp(v, 0.0, 1.0); }

double toLinear(double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); }
double fromLinear(double c) { return c <= 0.0031308 ? c * 12.92 : 1.055 * std::pow(c, 1 / 2.4) - 0.055; }

struct Hsl {
  double h = 0;  // 0 to 1
  double s = 0;
  double l = 0;
};

Hsl toHsl(const Color& c) {
  const double high = std::max({c.r, c.g, c.b});
  const double low = std::min({c.r, c.g, c.b});
  Hsl hsl{0, 0, (high + low) / 2};
  const double d = high - low;
  if (d <= 0) return hsl;
  hsl.s = hsl.l > 0.5 ? d / (2 - high - low) : d / (high + low);
  if (high == c.r) {
    hsl.h = (c.g - c.b) / d + (c.g < c.b ? 6 : 0);
  } else if (high == c.g) {
    hsl.h = (c.b - c.r) / d + 2;
  } else {
    hsl.h = (c.r - c.g) / d + 4;
  }
  hsl.h /= 6;
  return hsl;
}

Color fromHsl(Hsl hsl, double alpha) {
  hsl.h -= std::floor(hsl.h);
  hsl.s = clamp01(hsl.s);
  hsl.l = clamp01(hsl.l);
  const double q = hsl.l < 0.5 ? hsl.l * (1 + hsl.s) : hsl.l + hsl.s - hsl.l * hsl.s;
  const double p = 2 * hsl.l - q;
  const auto channel = [&](double t) {
    t -= std::floor(t);
    if (t < 1.0 / 6) return p + (q - p) * 6 * t;
    if (t < 0.5) return q;
    if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
    return p;
  };
  return {channel(hsl.h + 1.0 / 3), channel(hsl.h), channel(hsl.h - 1.0 / 3), alpha};
}

/// Applies X, XMod, XOff to a component; false when the suffix is none of these.
bool adjust(double& component, std::string_view suffix, double value) {
  if (suffix.empty()) {
    component = value;
  } else if (suffix == "Mod") {
    component *= value;
  } else if (suffix == "Off") {
    component += value;
  } else {
    return false;
  }
  return true;
}

void transform(Color& c, pugi::xml_node node) {
  std::string_view name = node.name();
  if (!name.starts_with("a:")) return;
  name.remove_prefix(2);
  const auto eachLinear = [&](const auto& change) {
    for (double* channel : {&c.r, &c.g, &c.b}) *channel = fromLinear(clamp01(change(toLinear(*channel))));
  };
  if (name == "comp") {
    auto hsl = toHsl(c);
    hsl.h += 0.5;
    c = fromHsl(hsl, c.a);
    return;
  }
  if (name == "inv") {
    eachLinear([](double v) { return 1 - v; });
    return;
  }
  if (name == "gray") {
    c.r = c.g = c.b = 0.2126 * c.r + 0.7152 * c.g + 0.0722 * c.b;
    return;
  }
  if (name == "gamma") {
    for (double* channel : {&c.r, &c.g, &c.b}) *channel = fromLinear(*channel);
    return;
  }
  if (name == "invGamma") {
    for (double* channel : {&c.r, &c.g, &c.b}) *channel = toLinear(*channel);
    return;
  }
  if (name.starts_with("hue")) {
    auto hsl = toHsl(c);
    const auto suffix = name.substr(3);
    const auto value = suffix == "Mod" ? shareOf(node.attribute("val")) : numberOf(node.attribute("val"));
    if (!value) return;
    if (adjust(hsl.h, suffix, suffix == "Mod" ? *value : *value / 21600000.0)) c = fromHsl(hsl, c.a);
    return;
  }
  const auto value = shareOf(node.attribute("val"));
  if (!value) return;
  if (name == "shade") {
    eachLinear([&](double v) { return v * *value; });
  } else if (name == "tint") {
    eachLinear([&](double v) { return v * *value + (1 - *value); });
  } else if (name.starts_with("alpha")) {
    if (adjust(c.a, name.substr(5), *value)) c.a = clamp01(c.a);
  } else if (name.starts_with("sat") || name.starts_with("lum")) {
    auto hsl = toHsl(c);
    if (adjust(name[0] == 's' ? hsl.s : hsl.l, name.substr(3), *value)) c = fromHsl(hsl, c.a);
  } else {
    static constexpr std::string_view channels[] = {"red", "green", "blue"};
    double* const parts[] = {&c.r, &c.g, &c.b};
    for (int i = 0; i < 3; ++i) {
      if (!name.starts_with(channels[i])) continue;
      double linear = toLinear(*parts[i]);
      if (adjust(linear, name.substr(channels[i].size()), *value)) *parts[i] = fromLinear(clamp01(linear));
    }
  }
}

std::optional<Color> hexColor(std::string_view text) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (text.size() != 6 || error != std::errc{} || end != text.data() + text.size()) return {};
  return Color::rgb(value);
}

std::optional<Color> baseColor(pugi::xml_node node, const ColorContext& context) {
  const std::string_view kind = node.name();
  const std::string_view val = node.attribute("val").value();
  if (kind == "a:srgbClr") return hexColor(val);
  if (kind == "a:schemeClr") {
    if (val == "phClr") return context.placeholder;
    static const ColorMap usual;
    const auto slot = (context.map != nullptr ? *context.map : usual).resolve(val);
    if (!slot || context.scheme == nullptr) return {};
    return (*context.scheme)[static_cast<std::size_t>(*slot)];
  }
  if (kind == "a:sysClr") {
    if (auto last = hexColor(node.attribute("lastClr").value())) return last;
    const bool light = val == "window" || val == "menu" || val == "highlightText" || val == "captionText" ||
                       val == "infoBk" || val == "3dHighlight";
    return light ? Color{1, 1, 1, 1} : Color{};
  }
  if (kind == "a:prstClr") {
    const auto value = presetColor(val);
    return value ? std::optional(Color::rgb(*value)) : std::nullopt;
  }
  if (kind == "a:scrgbClr") {
    const auto channel = [&](const char* key) {
      return fromLinear(clamp01(shareOf(node.attribute(key)).value_or(0)));
    };
    return Color{channel("r"), channel("g"), channel("b"), 1};
  }
  if (kind == "a:hslClr") {
    return fromHsl({numberOf(node.attribute("hue")).value_or(0) / 21600000.0,
                    shareOf(node.attribute("sat")).value_or(0), shareOf(node.attribute("lum")).value_or(0)},
                   1);
  }
  return {};
}

}  // namespace

Color Color::rgb(unsigned value) {
  return {((value >> 16) & 255U) / 255.0, ((value >> 8) & 255U) / 255.0, (value & 255U) / 255.0, 1};
}

std::optional<ThemeColor> themeColorNamed(std::string_view name) {
  static constexpr std::string_view names[ThemeColorCount] = {"dk1",     "lt1",     "dk2",     "lt2",
                                                              "accent1", "accent2", "accent3", "accent4",
                                                              "accent5", "accent6", "hlink",   "folHlink"};
  const auto* found = std::find(std::begin(names), std::end(names), name);
  if (found == std::end(names)) return {};
  return static_cast<ThemeColor>(found - std::begin(names));
}

ColorMap::ColorMap(pugi::xml_node clrMap) {
  static constexpr const char* mapped[] = {"bg1", "tx1", "bg2", "tx2"};
  static constexpr const char* accents[] = {"accent1", "accent2", "accent3", "accent4",
                                            "accent5", "accent6", "hlink",   "folHlink"};
  for (std::size_t i = 0; i < mapped_.size(); ++i) {
    mapped_[i] = themeColorNamed(clrMap.attribute(mapped[i]).value()).value_or(mapped_[i]);
  }
  for (std::size_t i = 0; i < accents_.size(); ++i) {
    accents_[i] = themeColorNamed(clrMap.attribute(accents[i]).value()).value_or(accents_[i]);
  }
}

std::optional<ThemeColor> ColorMap::resolve(std::string_view name) const {
  if (name == "bg1") return mapped_[0];
  if (name == "tx1") return mapped_[1];
  if (name == "bg2") return mapped_[2];
  if (name == "tx2") return mapped_[3];
  const auto plain = themeColorNamed(name);
  if (plain && *plain >= ThemeColor::Accent1) {
    return accents_[static_cast<std::size_t>(*plain) - static_cast<std::size_t>(ThemeColor::Accent1)];
  }
  return plain;
}

std::optional<Color> readColor(pugi::xml_node colorElement, const ColorContext& context) {
  auto color = baseColor(colorElement, context);
  if (color) {
    for (const auto child : colorElement.children()) transform(*color, child);
  }
  return color;
}

std::optional<Color> readChildColor(pugi::xml_node parent, const ColorContext& context) {
  for (const auto child : parent.children()) {
    if (std::string_view(child.name()).ends_with("Clr")) return readColor(child, context);
  }
  return {};
}

Color shaded(const Color& color, double amount) {
  const double target = amount > 0 ? 1 : 0;
  const double k = std::abs(amount);
  const auto mix = [&](double v) { return v + (target - v) * k; };
  return {mix(color.r), mix(color.g), mix(color.b), color.a};
}

}  // namespace render
