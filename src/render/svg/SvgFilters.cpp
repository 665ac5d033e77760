#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/svg/SvgDefs.h"

// Pixel effects as chains of SVG filter primitives. Colours are mixed as they are
// stored, as the program does that made the deck.

namespace render {

namespace {

// Weights of a grey value (ITU-R BT.601, which the program goes by).
constexpr double Red = 0.299;
constexpr double Green = 0.587;
constexpr double Blue = 0.114;

/// A browser blurs by the deviation, files state twice that.
double deviation(double blur) { return blur / 2; }

Color hueColor(double degrees) {
  const auto channel = [&](double offset) {
    const double h = std::fmod(degrees + offset + 720, 360) / 60;
    return std::clamp(std::abs(h - 3) - 1, 0.0, 1.0);
  };
  return {channel(0), channel(240), channel(120), 1};
}

/// Scale and shift of a channel for brightness and contrast, each -1 to 1.
std::pair<double, double> luminanceLine(double brightness, double contrast) {
  // Full contrast is a threshold.
  const double slope = contrast > 0 ? 1 / std::max(1 - contrast, 1.0 / 256) : 1 + contrast;
  // A washed-out picture, which has a name of its own in the program, keeps its whites.
  const bool isWashout = std::abs(brightness - 0.7) < 1e-6 && std::abs(contrast + 0.7) < 1e-6;
  return {slope, (1 - slope) / 2 + (isWashout ? 0.35 : brightness)};
}

class Primitives {
 public:
  explicit Primitives(HtmlOut& out) : out_(out) {}

  void matrix(const double (&rows)[3][5]) {
    out_ << "<feColorMatrix values=\"";
    for (const auto& row : rows) {
      for (const double value : row) out_.precise(value) << ' ';
    }
    out_ << "0 0 0 1 0\"/>";
  }
  void gray() { matrix({{Red, Green, Blue, 0, 0}, {Red, Green, Blue, 0, 0}, {Red, Green, Blue, 0, 0}}); }
  void linear(double slope, double intercept, std::string_view channels) {
    out_ << "<feComponentTransfer>";
    for (const char channel : channels) {
      out_ << "<feFunc" << channel << " type=\"linear\" slope=\"";
      out_.precise(slope) << "\" intercept=\"";
      out_.precise(intercept) << "\"/>";
    }
    out_ << "</feComponentTransfer>";
  }
  void threshold(double at, std::string_view channels) { linear(255, -255 * at + 0.5, channels); }

  void apply(const PictureEffect& effect);

 private:
  void duotone(const Color& dark, const Color& light);
  void changeColor(const Color& from, const Color& to);
  void tint(const Color& color, double amount);

  HtmlOut& out_;
  int changes_ = 0;
};

void Primitives::duotone(const Color& dark, const Color& light) {
  gray();
  out_ << "<feComponentTransfer>";
  const auto channel = [&](char name, double from, double to) {
    out_ << "<feFunc" << name << " type=\"table\" tableValues=\"";
    out_.precise(from) << ' ';
    out_.precise(to) << "\"/>";
  };
  channel('R', dark.r, light.r);
  channel('G', dark.g, light.g);
  channel('B', dark.b, light.b);
  out_ << "</feComponentTransfer>";
}

/// Marks the pixels whose three channels all are `from`'s, nearly, and puts `to` in
/// their place.
void Primitives::changeColor(const Color& from, const Color& to) {
  constexpr int Tolerance = 4;
  const auto number = std::to_string(++changes_);
  const auto channel = [&](char name, double value) {
    const int level = static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    out_ << "<feFunc" << name << " type=\"discrete\" tableValues=\"";
    for (int i = 0; i < 256; ++i)
      out_ << (i > 0 ? " " : "") << (std::abs(i - level) <= Tolerance ? '1' : '0');
    out_ << "\"/>";
  };
  out_ << "<feComponentTransfer result=\"in" << number
       << "\"><feFuncA type=\"linear\" slope=\"1\"/></feComponentTransfer><feComponentTransfer>";
  channel('R', from.r);
  channel('G', from.g);
  channel('B', from.b);
  out_ << "</feComponentTransfer><feColorMatrix values=\"0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 1 1 0 "
          "-2\"/><feComposite in2=\"in"
       << number << "\" operator=\"in\" result=\"is" << number << "\"/><feComposite in=\"in" << number
       << "\" in2=\"is" << number << "\" operator=\"out\" result=\"rest" << number << "\"/>";
  if (to.a <= 0) return;
  out_ << "<feFlood flood-color=\"" << to << "\"/><feComposite in2=\"is" << number
       << "\" operator=\"in\" result=\"new" << number << "\"/><feComposite in=\"rest" << number
       << "\" in2=\"new" << number << "\" operator=\"arithmetic\" k2=\"1\" k3=\"1\"/>";
}

void Primitives::tint(const Color& color, double amount) {
  const double keep = 1 - amount;
  const double channels[3] = {color.r, color.g, color.b};
  double rows[3][5] = {};
  for (int i = 0; i < 3; ++i) {
    const double k = amount * channels[i];
    rows[i][0] = k * Red;
    rows[i][1] = k * Green;
    rows[i][2] = k * Blue;
    rows[i][i] += keep;
  }
  matrix(rows);
}

void Primitives::apply(const PictureEffect& effect) {
  using Kind = PictureEffect::Kind;
  switch (effect.kind) {
    case Kind::Grayscale:
      return gray();
    case Kind::BiLevel:
      gray();
      return threshold(effect.amount, "RGB");
    case Kind::Luminance: {
      const auto [slope, shift] = luminanceLine(effect.amount, effect.second);
      return linear(slope, shift, "RGB");
    }
    case Kind::Duotone:
      return duotone(effect.color, effect.other);
    case Kind::ChangeColor:
      return changeColor(effect.color, effect.other);
    case Kind::ReplaceColor: {
      const Color& c = effect.color;
      return matrix({{0, 0, 0, 0, c.r}, {0, 0, 0, 0, c.g}, {0, 0, 0, 0, c.b}});
    }
    case Kind::Tint:
      return tint(hueColor(effect.second), effect.amount);
    case Kind::Hue:
      out_ << "<feColorMatrix type=\"hueRotate\" values=\"" << effect.amount
           << "\"/><feColorMatrix type=\"saturate\" values=\"" << std::max(0.0, 1 + effect.second) << "\"/>";
      return linear(1 - std::abs(effect.third), std::max(0.0, effect.third), "RGB");
    case Kind::Blur:
      out_ << "<feGaussianBlur stdDeviation=\"" << deviation(effect.amount) << "\"/>";
      return;
    case Kind::AlphaCeiling:
      return linear(255, 0, "A");
    case Kind::AlphaFloor:
      return linear(255, -254, "A");
    case Kind::AlphaInverse:
      return linear(-1, 1, "A");
    case Kind::AlphaBiLevel:
      return threshold(effect.amount, "A");
    case Kind::AlphaReplace:
      return linear(0, effect.amount, "A");
  }
}

}  // namespace

std::string SvgDefs::pictureFilter(const std::vector<PictureEffect>& effects) {
  auto id = newId();
  out_ << "<filter id=\"" << id
       << "\" x=\"0\" y=\"0\" width=\"1\" height=\"1\" color-interpolation-filters=\"sRGB\">";
  Primitives primitives(out_);
  for (const auto& effect : effects) primitives.apply(effect);
  out_ << "</filter>";
  return id;
}

void SvgDefs::openFilter(const std::string& id, const Rect& area, double margin) {
  out_ << "<filter id=\"" << id << "\" filterUnits=\"userSpaceOnUse\" x=\"" << area.x - margin << "\" y=\""
       << area.y - margin << "\" width=\"" << area.w + 2 * margin << "\" height=\"" << area.h + 2 * margin
       << "\" color-interpolation-filters=\"sRGB\">";
}

void SvgDefs::flood(const Color& color) { out_ << "<feFlood flood-color=\"" << color << "\"/>"; }

std::string SvgDefs::shadowFilter(const Shadow& shadow, const Rect& area) {
  auto id = newId();
  openFilter(id, area, shadow.blur * 1.5 + 2);
  out_ << "<feGaussianBlur in=\"SourceAlpha\" stdDeviation=\"" << deviation(shadow.blur)
       << "\" result=\"a\"/>";
  flood(shadow.color);
  out_ << "<feComposite in2=\"a\" operator=\"in\"/></filter>";
  return id;
}

std::string SvgDefs::fadingMask(const Reflection& reflection, const Rect& area) {
  const auto fade = newId();
  auto id = newId();
  const auto stop = [&](double position, double alpha) {
    out_ << "<stop offset=\"";
    out_.precise(position) << "\" stop-color=\"#fff\" stop-opacity=\"";
    out_.precise(alpha) << "\"/>";
  };
  out_ << "<linearGradient id=\"" << fade << "\" gradientUnits=\"userSpaceOnUse\" x1=\"0\" x2=\"0\" y1=\""
       << area.y + area.h << "\" y2=\"" << area.y << "\">";
  stop(reflection.startPosition, reflection.startAlpha);
  stop(reflection.endPosition, reflection.endAlpha);
  out_ << "</linearGradient><mask id=\"" << id << "\" maskUnits=\"userSpaceOnUse\" x=\"" << area.x
       << "\" y=\"" << area.y << "\" width=\"" << area.w << "\" height=\"" << area.h << "\"><rect x=\""
       << area.x << "\" y=\"" << area.y << "\" width=\"" << area.w << "\" height=\"" << area.h
       << "\" fill=\"url(#" << fade << ")\"/></mask>";
  return id;
}

std::string SvgDefs::effectFilter(const Effects& effects, const Rect& area) {
  auto id = newId();
  const double glow = effects.glow ? effects.glow->radius : 0;
  const double shadow = effects.shadow && effects.shadow->isMove()
                            ? std::hypot(effects.shadow->dx, effects.shadow->dy) + effects.shadow->blur * 1.5
                            : 0;
  openFilter(id, area, std::max({glow * 1.5, shadow, effects.blur * 1.5}) + 2);
  std::string_view shape = "SourceGraphic";
  // Darkness or light that comes in over the edge from where `moved` points.
  const auto within = [&](const Color& color, double blur, double dx, double dy, std::string_view result) {
    out_ << "<feComponentTransfer in=\"SourceAlpha\"><feFuncA type=\"linear\" slope=\"-1\" intercept=\"1\"/>"
         << "</feComponentTransfer><feGaussianBlur stdDeviation=\"" << deviation(blur)
         << "\"/><feOffset dx=\"" << -dx << "\" dy=\"" << -dy << "\" result=\"o\"/>";
    flood(color);
    out_ << "<feComposite in2=\"o\" operator=\"in\"/><feComposite in2=\"SourceAlpha\" operator=\"in\""
         << " result=\"i\"/><feMerge result=\"" << result << "\"><feMergeNode in=\"" << shape
         << "\"/><feMergeNode in=\"i\"/></feMerge>";
    shape = result;
  };
  if (effects.bevel) {
    // Light from above on the left, as in most of the program's light rigs.
    const double width = effects.bevel->width;
    within({0, 0, 0, 0.3}, width, width * 0.5, width * 0.5, "b1");
    within({1, 1, 1, 0.45}, width, -width * 0.5, -width * 0.5, "b2");
  }
  if (const auto& inner = effects.innerShadow) within(inner->color, inner->blur, inner->dx, inner->dy, "n");
  if (effects.softEdge > 0) {
    out_ << "<feMorphology in=\"SourceAlpha\" operator=\"erode\" radius=\"" << effects.softEdge * 0.75
         << "\"/><feGaussianBlur stdDeviation=\"" << effects.softEdge * 0.375
         << "\" result=\"e\"/><feComposite in=\"" << shape << "\" in2=\"e\" operator=\"in\" result=\"s\"/>";
    shape = "s";
  }
  if (effects.blur > 0) {
    out_ << "<feGaussianBlur in=\"" << shape << "\" stdDeviation=\"" << deviation(effects.blur)
         << "\" result=\"u\"/>";
    shape = "u";
  }
  const auto behind = [&](const Color& color, std::string_view alpha, std::string_view result) {
    flood(color);
    out_ << "<feComposite in2=\"" << alpha << "\" operator=\"in\" result=\"h\"/><feMerge result=\"" << result
         << "\"><feMergeNode in=\"h\"/><feMergeNode in=\"" << shape << "\"/></feMerge>";
    shape = result;
  };
  if (effects.glow) {
    out_ << "<feMorphology in=\"" << shape << "\" operator=\"dilate\" radius=\"" << glow / 2
         << "\"/><feGaussianBlur stdDeviation=\"" << glow / 4 << "\" result=\"g\"/>";
    behind(effects.glow->color, "g", "l");
  }
  if (shadow > 0) {
    out_ << "<feGaussianBlur in=\"" << shape << "\" stdDeviation=\"" << deviation(effects.shadow->blur)
         << "\"/><feOffset dx=\"" << effects.shadow->dx << "\" dy=\"" << effects.shadow->dy
         << "\" result=\"d\"/>";
    behind(effects.shadow->color, "d", "t");
  }
  out_ << "</filter>";
  return id;
}

}  // namespace render
