#include "render/svg/SvgWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

// Outlines as SVG: fills, pictures, strokes with their ends, and the effects around them.

namespace render {

namespace {

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

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

/// The box and what its outline and line add to it.
Rect drawnArea(const Box& box) {
  double left = 0;
  double top = 0;
  double right = box.frame.w;
  double bottom = box.frame.h;
  for (const auto& path : box.outline.paths) {
    for (const auto& command : path.commands) {
      const int count = operands(command.op);
      // Of an arc only the end is a point.
      for (int i = command.op == 'A' ? 5 : 0; i + 1 < count; i += 2) {
        left = std::min(left, command.v[i]);
        right = std::max(right, command.v[i]);
        top = std::min(top, command.v[i + 1]);
        bottom = std::max(bottom, command.v[i + 1]);
      }
    }
  }
  if (box.flipX) std::tie(left, right) = std::pair(box.frame.w - right, box.frame.w - left);
  if (box.flipY) std::tie(top, bottom) = std::pair(box.frame.h - bottom, box.frame.h - top);
  const double line = box.line ? std::max(box.line->width, 2.0) * 5 : 0;
  return {left - line, top - line, right - left + 2 * line, bottom - top + 2 * line};
}

/// Lines thinner than two points have the arrow heads of one of two points.
double headWidth(const Line& line) { return std::max(line.width, 2.0 * PxPerPoint); }

}  // namespace

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
  const auto filter = fill.effects.empty() ? std::string() : defs_.pictureFilter(fill.effects);
  std::string clip;
  if (!whole) {
    clip = defs_.newId();
    out_ << "<clipPath id=\"" << clip << "\"><path d=\"";
    for (const auto& path : outline.paths) {
      if (path.fill != PathFill::None) defs_.pathData(path.commands);
    }
    out_ << "\"/></clipPath>";
  }
  // The clip is that of the group: an image's own filter would come after it.
  const bool isGrouped = !whole && !filter.empty();
  if (isGrouped) out_ << "<g clip-path=\"url(#" << clip << ")\">";
  out_ << "<image ";
  defs_.pictureAddress(*fill.asset);
  out_ << " x=\"" << inside.x - w * left << "\" y=\"" << inside.y - h * top << "\" width=\"" << w
       << "\" height=\"" << h << "\" preserveAspectRatio=\"none\"";
  if (!whole && !isGrouped) out_ << " clip-path=\"url(#" << clip << ")\"";
  if (fill.alpha < 1) out_ << " opacity=\"" << fill.alpha << '"';
  if (!filter.empty()) out_ << " filter=\"url(#" << filter << ")\"";
  out_ << "/>";
  if (isGrouped) out_ << "</g>";
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
    reference = defs_.gradient(*gradient, area, box.rotation, box.outline);
  } else if (const auto* pattern = std::get_if<PatternFill>(&fill)) {
    reference = defs_.pattern(*pattern);
  } else if (const auto* image = std::get_if<PictureFill>(&fill)) {
    if (image->asset->width <= 0 || image->asset->height <= 0) return;
    reference = defs_.tiles(*image, area);
    opacity = image->alpha;
  }
  for (const auto& path : box.outline.paths) {
    if (path.fill == PathFill::None || path.commands.empty()) continue;
    const double shade = shadeOf(path.fill);
    out_ << "<path d=\"";
    defs_.pathData(path.commands);
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
      paint = defs_.gradient(*gradient, {0, 0, box.frame.w, box.frame.h}, box.rotation, box.outline);
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
      ids[i] = defs_.newId();
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
    std::string gaps;
    if (line.strands > 1) {
      gaps = defs_.newId();
      out_ << "<mask id=\"" << gaps << "\" maskUnits=\"userSpaceOnUse\" x=\"" << -line.width << "\" y=\""
           << -line.width << "\" width=\"" << box.frame.w + 2 * line.width << "\" height=\""
           << box.frame.h + 2 * line.width << "\">";
      const auto strand = [&](double share, const char* shade) {
        out_ << "<path d=\"";
        defs_.pathData(commands);
        out_ << "\" fill=\"none\" stroke=\"" << shade << "\" stroke-width=\"" << line.width * share
             << "\" stroke-linecap=\"square\"/>";
      };
      // Strands and the gaps between them are equally wide.
      const int stripes = 2 * line.strands - 1;
      for (int stripe = stripes; stripe > 0; stripe -= 2)
        strand(static_cast<double>(stripe) / stripes, (stripes - stripe) % 4 == 0 ? "#fff" : "#000");
      out_ << "</mask>";
    }
    out_ << "<path d=\"";
    defs_.pathData(commands);
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
    if (!gaps.empty()) out_ << " mask=\"url(#" << gaps << ")\"";
    out_ << "/>";
    if (shortened) {
      out_ << "<path d=\"";
      defs_.pathData(path.commands);
      out_ << "\" fill=\"none\"";
      markers();
      out_ << "/>";
    }
  }
}

void SvgWriter::content(const Box& box) {
  const bool isOverlaid = box.overlay && isVisible(box.fill);
  if (isOverlaid) out_ << "<g style=\"isolation:isolate\">";
  if (isVisible(box.under)) fillPaths(box, box.under);
  if (isVisible(box.fill)) fillPaths(box, box.fill);
  if (isOverlaid) {
    out_ << "<g style=\"mix-blend-mode:" << box.overlay->blending << "\">";
    fillPaths(box, box.overlay->fill);
    out_ << "</g></g>";
  }
  if (box.line) stroke(box, *box.line);
}

void SvgWriter::draw(const Box& box) {
  const bool filled = isVisible(box.fill) || isVisible(box.under);
  if (!filled && !box.line) return;
  out_ << "<svg width=\"" << std::max(1.0, box.frame.w) << "\" height=\"" << std::max(1.0, box.frame.h)
       << '"';
  const bool flipped = box.flipX || box.flipY;
  bool hasEffects = !box.effects.isEmpty() && !effectsReachText(box);
  if (hasEffects && box.effects.isMovedShadow()) {
    // Most shadows are; a browser has them at less cost than a chain of primitives.
    const Shadow& shadow = *box.effects.shadow;
    out_ << " style=\"filter:drop-shadow(" << shadow.dx << "px " << shadow.dy << "px " << shadow.blur / 2
         << "px " << shadow.color << ")\"";
    hasEffects = false;
  }
  out_ << '>';
  if (hasEffects) openEffects(box);
  if (flipped) {
    out_ << "<g transform=\"matrix(" << (box.flipX ? -1 : 1) << " 0 0 " << (box.flipY ? -1 : 1) << ' '
         << (box.flipX ? box.frame.w : 0.0) << ' ' << (box.flipY ? box.frame.h : 0.0) << ")\">";
  }
  content(box);
  if (flipped) out_ << "</g>";
  if (hasEffects) out_ << "</g>";
  out_ << "</svg>";
}

/// Opens the group of what the shape draws; what repeats it stands before it.
void SvgWriter::openEffects(const Box& box) {
  const Effects& effects = box.effects;
  const Rect area = drawnArea(box);
  const auto name = defs_.newId();
  const auto copy = [&](const Displacement& by) {
    const double x = box.frame.w * by.alignX;
    const double y = box.frame.h * by.alignY;
    out_ << "<g transform=\"translate(" << x + by.dx << ' ' << y + by.dy << ")matrix(";
    out_.precise(by.scaleX) << ' ';
    out_.precise(std::tan(radians(by.skewY)) * by.scaleX) << ' ';
    out_.precise(std::tan(radians(by.skewX)) * by.scaleY) << ' ';
    out_.precise(by.scaleY) << " 0 0)translate(" << -x << ' ' << -y << ")\"";
  };
  if (effects.shadow && !effects.shadow->isMove()) {
    const auto filter = defs_.shadowFilter(*effects.shadow, area);
    copy(*effects.shadow);
    out_ << "><use href=\"#" << name << "\" filter=\"url(#" << filter << ")\"/></g>";
  }
  if (const auto& reflection = effects.reflection; reflection && box.text.isEmpty()) {
    const auto mask = defs_.fadingMask(*reflection, {area.x, 0, area.w, box.frame.h});
    copy(*reflection);
    if (reflection->blur > 0) out_ << " style=\"filter:blur(" << reflection->blur / 2 << "px)\"";
    out_ << "><g mask=\"url(#" << mask << ")\"><use href=\"#" << name << "\"/></g></g>";
  }
  Effects own = effects;
  own.reflection.reset();
  if (own.shadow && !own.shadow->isMove()) own.shadow.reset();
  const auto filter = own.isEmpty() ? std::string() : defs_.effectFilter(own, area);
  out_ << "<g id=\"" << name << '"';
  if (!filter.empty()) out_ << " filter=\"url(#" << filter << ")\"";
  out_ << '>';
}

void SvgWriter::background(const Fill& fill, double width, double height) {
  Box box;
  box.frame = {0, 0, width, height};
  box.outline = Geometry::preset("rect")->evaluate(width * EmuPerPx, height * EmuPerPx, {});
  box.fill = fill;
  draw(box);
}

}  // namespace render
