#include "render/geometry/Geometry.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <unordered_map>

#include "render/geometry/GeometryCompiler.h"
#include "render/geometry/XmlValues.h"

// Guides are computed in the order of the file, then paths drawn through them.

namespace render {

namespace {

constexpr double RadPerUnit = std::numbers::pi / (180.0 * 60000.0);

double safe(double value) { return std::isfinite(value) ? value : 0; }

/// Arcs name the angle at which a ray from the centre meets the ellipse; drawing
/// wants the parameter of the circle that the ellipse is stretched from.
double parametric(double angle, double rx, double ry) {
  return std::atan2(rx * std::sin(angle), ry * std::cos(angle));
}

struct Pen {
  OutlinePath& path;
  double sx;
  double sy;
  Point at{};
  Point start{};

  void add(char op, std::initializer_list<double> v) {
    PathCommand command{op, {}};
    std::copy(v.begin(), v.end(), command.v);
    path.commands.push_back(command);
  }

  /// Radii as the path states them, angles in radians. Angles are of the path's
  /// own, unscaled ellipse.
  void arc(double rx, double ry, double from, double sweep) {
    if (rx <= 0 || ry <= 0 || sweep == 0 || sx <= 0 || sy <= 0) return;
    constexpr double full = 2 * std::numbers::pi;
    sweep = std::clamp(sweep, -full, full);
    const double t0 = parametric(from, rx, ry);
    const double t1 = parametric(from + sweep, rx, ry);
    double turn = t1 - t0;
    if (std::abs(sweep) >= full - 1e-9) {
      turn = sweep > 0 ? full : -full;
    } else if (sweep > 0 && turn < 0) {
      turn += full;
    } else if (sweep < 0 && turn > 0) {
      turn -= full;
    }
    rx *= sx;
    ry *= sy;
    const Point centre{at.x - rx * std::cos(t0), at.y - ry * std::sin(t0)};
    // An SVG arc cannot turn full circle, and is ill-conditioned near it.
    const int pieces = std::abs(turn) > std::numbers::pi * 1.5 ? 2 : 1;
    for (int i = 1; i <= pieces; ++i) {
      const double t = t0 + turn * i / pieces;
      at = {centre.x + rx * std::cos(t), centre.y + ry * std::sin(t)};
      const bool large = std::abs(turn) / pieces > std::numbers::pi;
      add('A', {rx, ry, 0, large ? 1.0 : 0.0, turn > 0 ? 1.0 : 0.0, at.x, at.y});
    }
  }
};

}  // namespace

const Geometry* Geometry::preset(std::string_view name) {
  static std::unordered_map<std::string_view, std::unique_ptr<Geometry>> compiled;
  const auto known = compiled.find(name);
  if (known != compiled.end()) return known->second.get();
  const auto* end = PresetTable + PresetTableSize;
  const auto* found = std::lower_bound(
      PresetTable, end, name, [](const PresetText& entry, std::string_view key) { return entry.name < key; });
  if (found == end || found->name != name) return nullptr;
  return compiled.emplace(found->name, std::make_unique<Geometry>(GeometryCompiler().compile(*found)))
      .first->second.get();
}

Geometry Geometry::custom(pugi::xml_node custGeom) { return GeometryCompiler().compile(custGeom); }

double Geometry::compute(const Guide& guide, const std::vector<double>& values) {
  const double x = values[guide.from[0]];
  const double y = values[guide.from[1]];
  const double z = values[guide.from[2]];
  switch (guide.op) {
    case Op::MulDiv:
      return safe(x * y / z);
    case Op::AddSub:
      return x + y - z;
    case Op::AddDiv:
      return safe((x + y) / z);
    case Op::IfElse:
      return x > 0 ? y : z;
    case Op::Abs:
      return std::abs(x);
    case Op::Atan2:
      return std::atan2(y, x) / RadPerUnit;
    case Op::CosAtan2:
      return x * std::cos(std::atan2(z, y));
    case Op::Cos:
      return x * std::cos(y * RadPerUnit);
    case Op::Max:
      return std::max(x, y);
    case Op::Min:
      return std::min(x, y);
    case Op::Mod:
      return std::sqrt(x * x + y * y + z * z);
    case Op::Pin:
      return y < x ? x : (y > z ? z : y);
    case Op::SinAtan2:
      return x * std::sin(std::atan2(z, y));
    case Op::Sin:
      return x * std::sin(y * RadPerUnit);
    case Op::Sqrt:
      return x > 0 ? std::sqrt(x) : 0;
    case Op::Tan:
      return safe(x * std::tan(y * RadPerUnit));
    case Op::Val:
      return x;
  }
  return 0;
}

Outline Geometry::evaluate(double width, double height, const Adjusts& adjusts) const {
  using C = GeometryCompiler;
  std::vector<double> values = constants_;
  const double w = width;
  const double h = height;
  const double shorter = std::min(w, h);
  const std::pair<C::Builtin, double> builtins[] = {{C::R, w},
                                                    {C::B, h},
                                                    {C::W, w},
                                                    {C::H, h},
                                                    {C::HC, w / 2},
                                                    {C::VC, h / 2},
                                                    {C::SS, shorter},
                                                    {C::LS, std::max(w, h)},
                                                    {C::WD2, w / 2},
                                                    {C::WD3, w / 3},
                                                    {C::WD4, w / 4},
                                                    {C::WD5, w / 5},
                                                    {C::WD6, w / 6},
                                                    {C::WD8, w / 8},
                                                    {C::WD10, w / 10},
                                                    {C::WD12, w / 12},
                                                    {C::WD32, w / 32},
                                                    {C::HD2, h / 2},
                                                    {C::HD3, h / 3},
                                                    {C::HD4, h / 4},
                                                    {C::HD5, h / 5},
                                                    {C::HD6, h / 6},
                                                    {C::HD8, h / 8},
                                                    {C::HD10, h / 10},
                                                    {C::HD12, h / 12},
                                                    {C::HD32, h / 32},
                                                    {C::SSD2, shorter / 2},
                                                    {C::SSD4, shorter / 4},
                                                    {C::SSD6, shorter / 6},
                                                    {C::SSD8, shorter / 8},
                                                    {C::SSD16, shorter / 16},
                                                    {C::SSD32, shorter / 32},
                                                    {C::CD2, 10800000.0},
                                                    {C::CD4, 5400000.0},
                                                    {C::CD8, 2700000.0},
                                                    {C::CD3_4, 16200000.0},
                                                    {C::CD3_8, 8100000.0},
                                                    {C::CD5_8, 13500000.0},
                                                    {C::CD7_8, 18900000.0}};
  for (const auto& [slot, value] : builtins) values[slot] = value;
  for (const auto& adjust : adjusts_) {
    const auto stated = std::find_if(adjusts.begin(), adjusts.end(),
                                     [&](const auto& entry) { return entry.first == adjust.name; });
    values[adjust.guide.to] = stated != adjusts.end() ? stated->second : compute(adjust.guide, values);
  }
  for (const auto& guide : guides_) values[guide.to] = safe(compute(guide, values));

  Outline outline;
  outline.isRectangle = isRectangle_;
  const double left = pxFromEmu(values[textRect_[0]]);
  const double top = pxFromEmu(values[textRect_[1]]);
  outline.text = {left, top, std::max(0.0, pxFromEmu(values[textRect_[2]]) - left),
                  std::max(0.0, pxFromEmu(values[textRect_[3]]) - top)};
  outline.paths.reserve(paths_.size());
  for (const auto& path : paths_) {
    auto& out = outline.paths.emplace_back();
    out.fill = path.fill;
    out.stroke = path.stroke;
    out.commands.reserve(path.commands.size());
    Pen pen{out, (path.width > 0 ? w / path.width : 1) / EmuPerPx,
            (path.height > 0 ? h / path.height : 1) / EmuPerPx};
    for (const auto& command : path.commands) {
      const auto point = [&](std::size_t i) {
        return Point{values[command.slots[2 * i]] * pen.sx, values[command.slots[2 * i + 1]] * pen.sy};
      };
      switch (command.op) {
        case 'M':
        case 'L':
          pen.at = point(0);
          if (command.op == 'M') pen.start = pen.at;
          pen.add(command.op, {pen.at.x, pen.at.y});
          break;
        case 'Q': {
          const auto c = point(0);
          pen.at = point(1);
          pen.add('Q', {c.x, c.y, pen.at.x, pen.at.y});
          break;
        }
        case 'C': {
          const auto c1 = point(0);
          const auto c2 = point(1);
          pen.at = point(2);
          pen.add('C', {c1.x, c1.y, c2.x, c2.y, pen.at.x, pen.at.y});
          break;
        }
        case 'A':
          pen.arc(values[command.slots[0]], values[command.slots[1]], values[command.slots[2]] * RadPerUnit,
                  values[command.slots[3]] * RadPerUnit);
          break;
        case 'Z':
          pen.at = pen.start;
          pen.add('Z', {});
          break;
        default:
          break;
      }
    }
  }
  return outline;
}

Adjusts readAdjusts(pugi::xml_node geometry) {
  Adjusts adjusts;
  for (const auto gd : geometry.child("a:avLst").children("a:gd")) {
    const std::string_view formula = gd.attribute("fmla").value();
    const auto value = formula.starts_with("val ") ? parseNumber(formula.substr(4)) : std::nullopt;
    if (value) adjusts.emplace_back(gd.attribute("name").value(), *value);
  }
  return adjusts;
}

}  // namespace render
