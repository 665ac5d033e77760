#include "render/SvgWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace render {

namespace {

int operands(char op) {
  switch (op) {
    case 'M':
    case 'L':
      return 2;
    case 'Q':
      return 4;
    case 'C':
      return 6;
    case 'A':
      return 7;
    default:
      return 0;
  }
}

/// Parts of a preset that are lit or in shade (ECMA-376 part 1, 20.1.10.37).
double shadeOf(PathFill fill) {
  switch (fill) {
    case PathFill::Lighten:
      return 0.4;
    case PathFill::LightenLess:
      return 0.2;
    case PathFill::Darken:
      return -0.4;
    case PathFill::DarkenLess:
      return -0.2;
    default:
      return 0;
  }
}

bool isClosed(const OutlinePath& path) {
  return std::any_of(path.commands.begin(), path.commands.end(), [](const auto& c) { return c.op == 'Z'; });
}

/// Pulls the end of an open path back, so that a thick line does not show beside
/// the tip of its arrow head.
void shorten(std::vector<PathCommand>& commands, double length, bool atStart) {
  if (commands.size() < 2) return;
  auto& first = commands.front();
  auto& second = commands[1];
  auto& last = commands.back();
  const auto& beforeLast = commands[commands.size() - 2];
  if (atStart ? second.op != 'L' : (last.op != 'L' || operands(beforeLast.op) < 2)) return;
  double* tip = atStart ? first.v : last.v;
  const double* from = atStart ? second.v : beforeLast.v + operands(beforeLast.op) - 2;
  const double dx = tip[0] - from[0];
  const double dy = tip[1] - from[1];
  const double distance = std::hypot(dx, dy);
  if (distance <= length) return;
  tip[0] -= dx / distance * length;
  tip[1] -= dy / distance * length;
}

/// Lines thinner than two points have the arrow heads of one of two points.
double headWidth(const Line& line) { return std::max(line.width, 2.0 * PxPerPoint); }

}  // namespace

std::string SvgWriter::newId() { return idPrefix_ + "-" + std::to_string(++lastId_); }

void SvgWriter::pathData(const std::vector<PathCommand>& commands) {
  if (!commands.empty() && commands.front().op != 'M') out_ << "M0 0";
  for (const auto& command : commands) {
    out_ << command.op;
    for (int i = 0; i < operands(command.op); ++i) {
      if (i > 0) out_ << ' ';
      out_ << command.v[i];
    }
  }
}

std::string SvgWriter::defineGradient(const Gradient& gradient, const Rect& area) {
  const auto id = newId();
  if (gradient.shape == Gradient::Shape::Linear) {
    double angle = gradient.angle * std::numbers::pi / 180;
    if (gradient.scaled) angle = std::atan2(area.w * std::sin(angle), area.h * std::cos(angle));
    const double reach = (std::abs(area.w * std::cos(angle)) + std::abs(area.h * std::sin(angle))) / 2;
    const double x = area.x + area.w / 2;
    const double y = area.y + area.h / 2;
    out_ << "<linearGradient gradientUnits=\"userSpaceOnUse\" id=\"" << id << "\" x1=\""
         << x - reach * std::cos(angle) << "\" y1=\"" << y - reach * std::sin(angle) << "\" x2=\""
         << x + reach * std::cos(angle) << "\" y2=\"" << y + reach * std::sin(angle) << "\">";
  } else {
    const auto& [left, top, right, bottom] = gradient.focus;
    const double x = area.x + area.w * (left + 1 - right) / 2;
    const double y = area.y + area.h * (top + 1 - bottom) / 2;
    const double farX = std::max(x - area.x, area.x + area.w - x);
    const double farY = std::max(y - area.y, area.y + area.h - y);
    const double radius =
        gradient.shape == Gradient::Shape::Circle ? std::hypot(farX, farY) : std::max(farX, farY);
    out_ << "<radialGradient gradientUnits=\"userSpaceOnUse\" id=\"" << id << "\" cx=\"" << x << "\" cy=\""
         << y << "\" r=\"" << radius << "\">";
  }
  for (const auto& stop : gradient.stops) {
    out_ << "<stop offset=\"" << stop.position * 100 << "%\" stop-color=\"" << stop.color << "\"/>";
  }
  out_ << (gradient.shape == Gradient::Shape::Linear ? "</linearGradient>" : "</radialGradient>");
  return id;
}

std::string SvgWriter::definePattern(const PatternFill& pattern) {
  const auto id = newId();
  out_ << "<pattern id=\"" << id
       << "\" patternUnits=\"userSpaceOnUse\" width=\"8\" height=\"8\"><rect width=\"8\" height=\"8\" fill=\""
       << pattern.background << "\"/><path shape-rendering=\"crispEdges\" fill=\"" << pattern.foreground
       << "\" d=\"";
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < 8;) {
      const auto isSet = [&](int at) {
        return at < 8 &&
               (static_cast<unsigned>(pattern.rows[static_cast<std::size_t>(row)]) >> (7 - at) & 1U) != 0;
      };
      int length = 0;
      while (isSet(column + length)) ++length;
      if (length > 0) out_ << 'M' << column << ' ' << row << 'h' << length << "v1h-" << length << 'z';
      column += std::max(length, 1);
    }
  }
  out_ << "\"/></pattern>";
  return id;
}

std::string SvgWriter::defineTiles(const PictureFill& fill, const Rect& area) {
  const auto id = newId();
  const auto& tile = *fill.tile;
  const double w = std::max(1.0, fill.asset->width * std::abs(tile.scaleX));
  const double h = std::max(1.0, fill.asset->height * std::abs(tile.scaleY));
  const double x = area.x + tile.offsetX + (area.w - w) * tile.alignX;
  const double y = area.y + tile.offsetY + (area.h - h) * tile.alignY;
  out_ << "<pattern id=\"" << id << "\" patternUnits=\"userSpaceOnUse\" x=\"" << x << "\" y=\"" << y
       << "\" width=\"" << w * (tile.flipX ? 2 : 1) << "\" height=\"" << h * (tile.flipY ? 2 : 1) << "\">";
  for (int i = 0; i < (tile.flipX ? 2 : 1); ++i) {
    for (int j = 0; j < (tile.flipY ? 2 : 1); ++j) {
      out_ << "<image href=\"" << assetPrefix_ << fill.asset->name << "\" width=\"" << w << "\" height=\""
           << h << "\" preserveAspectRatio=\"none\"";
      if (i + j > 0) {
        out_ << " transform=\"translate(" << (i > 0 ? 2 * w : 0.0) << ' ' << (j > 0 ? 2 * h : 0.0)
             << ")scale(" << (i > 0 ? -1 : 1) << ' ' << (j > 0 ? -1 : 1) << ")\"";
      }
      out_ << "/>";
    }
  }
  out_ << "</pattern>";
  return id;
}

void SvgWriter::picture(const Outline& outline, const Rect& area, const PictureFill& fill) {
  const auto& [left, top, right, bottom] = fill.crop;
  const double keepX = 1 - left - right;
  const double keepY = 1 - top - bottom;
  if (keepX <= 0 || keepY <= 0) return;
  const Rect inside{area.x + area.w * fill.inset[0], area.y + area.h * fill.inset[1],
                    area.w * (1 - fill.inset[0] - fill.inset[2]),
                    area.h * (1 - fill.inset[1] - fill.inset[3])};
  const double w = inside.w / keepX;
  const double h = inside.h / keepY;
  if (!(w > 0) || !(h > 0)) return;
  const bool whole = outline.isRectangle &&
                     std::all_of(fill.crop.begin(), fill.crop.end(), [](double v) { return v == 0; }) &&
                     std::all_of(fill.inset.begin(), fill.inset.end(), [](double v) { return v >= 0; });
  std::string clip;
  if (!whole) {
    clip = newId();
    out_ << "<clipPath id=\"" << clip << "\"><path d=\"";
    for (const auto& path : outline.paths) {
      if (path.fill != PathFill::None) pathData(path.commands);
    }
    out_ << "\"/></clipPath>";
  }
  out_ << "<image href=\"" << assetPrefix_ << fill.asset->name << "\" x=\"" << inside.x - w * left
       << "\" y=\"" << inside.y - h * top << "\" width=\"" << w << "\" height=\"" << h
       << "\" preserveAspectRatio=\"none\"";
  if (!whole) out_ << " clip-path=\"url(#" << clip << ")\"";
  if (fill.alpha < 1) out_ << " opacity=\"" << fill.alpha << '"';
  if (fill.grayscale) out_ << " style=\"filter:grayscale(1)\"";
  out_ << "/>";
}

void SvgWriter::fillPaths(const Box& box, const Fill& fill) {
  const Rect area{0, 0, box.frame.w, box.frame.h};
  if (const auto* image = std::get_if<PictureFill>(&fill); image != nullptr && !image->tile) {
    picture(box.outline, area, *image);
    return;
  }
  std::string reference;
  double opacity = 1;
  if (const auto* gradient = std::get_if<Gradient>(&fill)) {
    reference = defineGradient(*gradient, area);
  } else if (const auto* pattern = std::get_if<PatternFill>(&fill)) {
    reference = definePattern(*pattern);
  } else if (const auto* image = std::get_if<PictureFill>(&fill)) {
    if (image->asset->width <= 0 || image->asset->height <= 0) return;
    reference = defineTiles(*image, area);
    opacity = image->alpha;
  }
  for (const auto& path : box.outline.paths) {
    if (path.fill == PathFill::None || path.commands.empty()) continue;
    const double shade = shadeOf(path.fill);
    out_ << "<path d=\"";
    pathData(path.commands);
    out_ << "\" fill=\"";
    if (const auto* color = std::get_if<Color>(&fill)) {
      out_ << shaded(*color, shade);
    } else {
      out_ << "url(#" << reference << ')';
      if (shade != 0) out_ << "\" style=\"filter:brightness(" << 1 + shade << ')';
    }
    if (opacity < 1) out_ << "\" opacity=\"" << opacity;
    out_ << "\"/>";
  }
}

void SvgWriter::marker(const LineEnd& end, const Line& line, const Color& color, const std::string& id) {
  const double scale = headWidth(line);
  const double w = end.width * scale;
  const double l = end.length * scale;
  using Kind = LineEnd::Kind;
  const bool centred = end.kind == Kind::Oval || end.kind == Kind::Diamond;
  out_ << "<marker id=\"" << id
       << "\" markerUnits=\"userSpaceOnUse\" orient=\"auto-start-reverse\" overflow=\"visible\""
       << " markerWidth=\"" << l << "\" markerHeight=\"" << w << "\" refX=\"" << (centred ? l / 2 : l)
       << "\" refY=\"" << w / 2 << "\">";
  if (end.kind == Kind::Oval) {
    out_ << "<ellipse cx=\"" << l / 2 << "\" cy=\"" << w / 2 << "\" rx=\"" << l / 2 << "\" ry=\"" << w / 2
         << "\" fill=\"" << color << "\"/>";
  } else if (end.kind == Kind::Arrow) {
    out_ << "<path d=\"M0 0L" << l << ' ' << w / 2 << "L0 " << w << "\" fill=\"none\" stroke=\"" << color
         << "\" stroke-width=\"" << line.width << "\" stroke-linecap=\"round\"/>";
  } else {
    out_ << "<path d=\"";
    if (end.kind == Kind::Diamond) {
      out_ << "M0 " << w / 2 << 'L' << l / 2 << " 0L" << l << ' ' << w / 2 << 'L' << l / 2 << ' ' << w << 'Z';
    } else {
      out_ << "M0 0L" << l << ' ' << w / 2 << "L0 " << w;
      if (end.kind == Kind::Stealth) out_ << 'L' << l * 0.4 << ' ' << w / 2;
      out_ << 'Z';
    }
    out_ << "\" fill=\"" << color << "\"/>";
  }
  out_ << "</marker>";
}

void SvgWriter::stroke(const Box& box, const Line& line) {
  std::string paint;
  Color color;
  if (const auto* solid = std::get_if<Color>(&line.fill)) {
    color = *solid;
  } else if (const auto* gradient = std::get_if<Gradient>(&line.fill)) {
    // Along a line without extent a gradient in user space is undefined; it still has its colours.
    color = gradient->stops.front().color;
    if (box.frame.w > 0 && box.frame.h > 0) {
      paint = defineGradient(*gradient, {0, 0, box.frame.w, box.frame.h});
    }
  } else {
    return;
  }
  for (const auto& path : box.outline.paths) {
    if (!path.stroke || path.commands.empty()) continue;
    const bool open = !isClosed(path);
    std::string ids[2];
    auto commands = path.commands;
    const LineEnd* ends[] = {&line.head, &line.tail};
    for (int i = 0; open && i < 2; ++i) {
      if (ends[i]->kind == LineEnd::Kind::None) continue;
      ids[i] = newId();
      marker(*ends[i], line, color, ids[i]);
    }
    // Markers stand at the true ends, so the shortened line is drawn without them.
    const auto pull = [&](const LineEnd& end) {
      using Kind = LineEnd::Kind;
      const double length = end.length * headWidth(line);
      return end.kind == Kind::Triangle  ? length * 0.7
             : end.kind == Kind::Stealth ? length * 0.5
             : end.kind == Kind::Arrow   ? line.width
                                         : 0.0;
    };
    bool shortened = false;
    for (int i = 0; i < 2; ++i) {
      const double length = ids[i].empty() ? 0 : pull(*ends[i]);
      if (length <= 0) continue;
      shorten(commands, length, i == 0);
      shortened = true;
    }
    const auto markers = [&] {
      if (!ids[0].empty()) out_ << " marker-start=\"url(#" << ids[0] << ")\"";
      if (!ids[1].empty()) out_ << " marker-end=\"url(#" << ids[1] << ")\"";
    };
    out_ << "<path d=\"";
    pathData(commands);
    out_ << "\" fill=\"none\" stroke=\"";
    if (paint.empty()) {
      out_ << color;
    } else {
      out_ << "url(#" << paint << ')';
    }
    // A width of nothing means the thinnest line there is.
    out_ << "\" stroke-width=\"" << std::max(line.width, 0.75) << '"';
    if (line.cap != Cap::Flat)
      out_ << " stroke-linecap=\"" << (line.cap == Cap::Round ? "round" : "square") << '"';
    if (line.join != Join::Miter)
      out_ << " stroke-linejoin=\"" << (line.join == Join::Round ? "round" : "bevel") << '"';
    if (!line.dashes.empty()) {
      out_ << " stroke-dasharray=\"";
      for (std::size_t i = 0; i < line.dashes.size(); ++i) {
        if (i > 0) out_ << ' ';
        // Round and square caps add half a width at both ends of a dash.
        const double extra = line.cap == Cap::Flat ? 0 : (i % 2 == 0 ? -0.999 : 0.999);
        out_ << std::max(0.01, (line.dashes[i] + extra) * std::max(line.width, 0.75));
      }
      out_ << '"';
    }
    if (!shortened) markers();
    out_ << "/>";
    if (shortened) {
      out_ << "<path d=\"";
      pathData(path.commands);
      out_ << "\" fill=\"none\"";
      markers();
      out_ << "/>";
    }
  }
}

void SvgWriter::draw(const Box& box) {
  const bool filled = isVisible(box.fill) || isVisible(box.under);
  if (!filled && !box.line) return;
  out_ << "<svg width=\"" << std::max(1.0, box.frame.w) << "\" height=\"" << std::max(1.0, box.frame.h)
       << '"';
  const auto& shadow = box.shadow;
  const bool flipped = box.flipX || box.flipY;
  if (flipped || shadow) {
    out_ << " style=\"";
    if (flipped) out_ << "transform:scale(" << (box.flipX ? -1 : 1) << ',' << (box.flipY ? -1 : 1) << ");";
    if (shadow) {
      out_ << "filter:drop-shadow(" << shadow->dx * (box.flipX ? -1 : 1) << "px "
           << shadow->dy * (box.flipY ? -1 : 1) << "px " << shadow->blur / 2 << "px " << shadow->color << ')';
    }
    out_ << '"';
  }
  out_ << '>';
  if (isVisible(box.under)) fillPaths(box, box.under);
  if (isVisible(box.fill)) fillPaths(box, box.fill);
  if (box.line) stroke(box, *box.line);
  out_ << "</svg>";
}

void SvgWriter::background(const Fill& fill, double width, double height) {
  Box box;
  box.frame = {0, 0, width, height};
  box.outline = Geometry::preset("rect")->evaluate(width * EmuPerPx, height * EmuPerPx, {});
  box.fill = fill;
  draw(box);
}

}  // namespace render
