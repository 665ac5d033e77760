#include "render/html/WordArt.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "render/text/FontMetrics.h"

// Text bent into a warp's form: outlines of its glyphs between the upper and the lower edge.

namespace render {

namespace {

using std::numbers::pi;

double arch(double u) { return std::sin(pi * u); }
double roof(double u) { return 1 - std::abs(2 * u - 1); }

/// Upper and lower edge of the form at `u`, shares of the width and the height, with the warps' own adjust
/// values. The curves are those of the standard, simplified to sines.
struct Envelope {
  const char* warp;
  double (*top)(double u);
  double (*bottom)(double u);
};

constexpr Envelope Envelopes[] = {
    {"textInflate", [](double u) { return 0.1875 * (1 - arch(u)); },
     [](double u) { return 0.8125 + 0.1875 * arch(u); }},
    {"textDeflate", [](double u) { return 0.1875 * arch(u); }, [](double u) { return 1 - 0.1875 * arch(u); }},
    {"textInflateBottom", [](double) { return 0.0; }, [](double u) { return 0.6875 + 0.3125 * arch(u); }},
    {"textInflateTop", [](double u) { return 0.3125 * (1 - arch(u)); }, [](double) { return 1.0; }},
    {"textDeflateBottom", [](double) { return 0.0; }, [](double u) { return 1 - 0.5 * arch(u); }},
    {"textDeflateTop", [](double u) { return 0.5 * arch(u); }, [](double) { return 1.0; }},
    {"textWave1", [](double u) { return 0.125 - 0.125 * std::sin(2 * pi * u); },
     [](double u) { return 0.875 - 0.125 * std::sin(2 * pi * u); }},
    {"textWave2", [](double u) { return 0.125 + 0.125 * std::sin(2 * pi * u); },
     [](double u) { return 0.875 + 0.125 * std::sin(2 * pi * u); }},
    {"textDoubleWave1", [](double u) { return 0.0625 - 0.0625 * std::sin(4 * pi * u); },
     [](double u) { return 0.9375 - 0.0625 * std::sin(4 * pi * u); }},
    {"textWave4", [](double u) { return 0.0625 + 0.0625 * std::sin(4 * pi * u); },
     [](double u) { return 0.9375 + 0.0625 * std::sin(4 * pi * u); }},
    {"textChevron", [](double u) { return 0.25 * (1 - roof(u)); },
     [](double u) { return 1 - 0.25 * roof(u); }},
    {"textChevronInverted", [](double u) { return 0.25 * roof(u); },
     [](double u) { return 0.75 + 0.25 * roof(u); }},
    {"textTriangle", [](double u) { return 0.5 * (1 - roof(u)); }, [](double) { return 1.0; }},
    {"textTriangleInverted", [](double) { return 0.0; }, [](double u) { return 0.5 + 0.5 * roof(u); }},
    {"textSlantUp", [](double u) { return 0.5556 * (1 - u); }, [](double u) { return 1 - 0.5556 * u; }},
    {"textSlantDown", [](double u) { return 0.4444 * u; }, [](double u) { return 0.5556 + 0.4444 * u; }},
    {"textCascadeUp", [](double u) { return 0.5556 * (1 - u); }, [](double u) { return 1 - 0.2222 * u; }},
    {"textCascadeDown", [](double u) { return 0.5556 * u; }, [](double u) { return 0.7778 + 0.2222 * u; }},
    {"textFadeRight", [](double u) { return 0.3333 * u; }, [](double u) { return 1 - 0.3333 * u; }},
    {"textFadeLeft", [](double u) { return 0.3333 * (1 - u); }, [](double u) { return 0.6667 + 0.3333 * u; }},
    {"textCanUp", [](double u) { return 0.1429 * (1 - arch(u)); },
     [](double u) { return 1 - 0.1429 * arch(u); }},
    {"textCanDown", [](double u) { return 0.1429 * arch(u); },
     [](double u) { return 0.8571 + 0.1429 * arch(u); }},
    {"textCurveUp", [](double u) { return 0.4598 * (1 - std::sin(pi / 2 * u)); },
     [](double u) { return 1 - 0.4598 * std::sin(pi / 2 * u); }},
    {"textCurveDown", [](double u) { return 0.4598 * (1 - std::cos(pi / 2 * u)); },
     [](double u) { return 1 - 0.4598 * std::cos(pi / 2 * u); }},
    {"textStop", [](double u) { return 0.25 * std::clamp(1 - 4 * std::min(u, 1 - u), 0.0, 1.0); },
     [](double u) { return 1 - 0.25 * std::clamp(1 - 4 * std::min(u, 1 - u), 0.0, 1.0); }},
};

/// Text along an ellipse: where it starts and how far it goes, degrees clockwise from the left.
struct Arc {
  const char* warp;
  double start;
  double sweep;
};

constexpr Arc Arcs[] = {{"textArchUp", 0, 180},        {"textArchUpPour", 0, 180}, {"textArchDown", 0, -180},
                        {"textArchDownPour", 0, -180}, {"textCircle", 0, 360},     {"textCirclePour", 0, 360},
                        {"textButton", 0, 180},        {"textButtonPour", 0, 180}, {"textRingInside", 0, 360},
                        {"textRingOutside", 0, -360}};

struct Piece {
  std::vector<std::vector<Point>> polygons;
  Fill fill;
};

struct TextLine {
  std::vector<Piece> pieces;
  double width = 0;
  double size = 0;
  Align align = Align::Left;
};

/// Lines of the text in px, from their baselines.
std::vector<TextLine> linesOf(const TextBody& body) {
  std::vector<TextLine> lines;
  for (const auto& paragraph : body.paragraphs) {
    lines.emplace_back();
    for (const auto& run : paragraph.runs) {
      if (run.kind == Run::Kind::Break) {
        lines.emplace_back();
        continue;
      }
      auto& line = lines.back();
      line.align = paragraph.style.align.value_or(Align::Left);
      const double size = run.style.size.value_or(18) * PxPerPoint;
      line.size = std::max(line.size, size);
      splitByScript(run.text, [&](std::string_view text, Script script) {
        const FaceName face{run.style.typeface(script), run.style.bold.value_or(false),
                            run.style.italic.value_or(false)};
        Piece piece{textOutline(face, text), run.style.fill.value_or(Color{})};
        for (auto& polygon : piece.polygons) {
          for (auto& point : polygon) point = {line.width + point.x * size, point.y * size};
        }
        line.width += textWidth(face, text) * size;
        if (!piece.polygons.empty()) line.pieces.push_back(std::move(piece));
      });
    }
  }
  std::erase_if(lines, [](const TextLine& line) { return line.pieces.empty(); });
  return lines;
}

/// The ink's upper and lower end, from the first baseline.
struct Extent {
  double top = 1e9;
  double bottom = -1e9;
};

/// Lays the lines under each other and to their sides; gives what they take up.
Extent stack(std::vector<TextLine>& lines, double width) {
  Extent ink;
  double baseline = 0;
  for (auto& line : lines) {
    if (&line != &lines.front()) baseline += SingleLine * line.size;
    const double free = width - line.width;
    const double left = line.align == Align::Center ? free / 2 : line.align == Align::Right ? free : 0;
    for (auto& piece : line.pieces) {
      for (auto& polygon : piece.polygons) {
        for (auto& point : polygon) {
          point = {point.x + left, point.y + baseline};
          ink.top = std::min(ink.top, point.y);
          ink.bottom = std::max(ink.bottom, point.y);
        }
      }
    }
  }
  return ink;
}

const Color* colorOf(const Fill& fill) {
  if (const auto* gradient = std::get_if<Gradient>(&fill)) return &gradient->stops.front().color;
  if (const auto* pattern = std::get_if<PatternFill>(&fill)) return &pattern->foreground;
  return std::get_if<Color>(&fill);
}

void noteUse(HtmlOut& out, const TextBody& body) {
  out.textUse().add(body.timeShown);
  for (const auto& paragraph : body.paragraphs) {
    for (const auto& run : paragraph.runs) {
      splitByScript(run.text, [&](std::string_view, Script script) {
        out.textUse().add(fontStack(run.style.typeface(script)));
      });
    }
  }
}

}  // namespace

bool writeWordArt(HtmlOut& out, const TextBody& body, const Rect& area, double rotation) {
  const auto& warp = body.properties.warp;
  if (warp.empty() || area.w <= 0 || area.h <= 0) return false;
  auto lines = linesOf(body);
  if (lines.empty()) return false;
  double width = 0;
  for (const auto& line : lines) width = std::max(width, line.width);
  const auto ink = stack(lines, width);
  if (width <= 0 || ink.bottom <= ink.top) return false;

  const auto* envelope = std::find_if(std::begin(Envelopes), std::end(Envelopes),
                                      [&](const Envelope& known) { return warp == known.warp; });
  const auto* arc =
      std::find_if(std::begin(Arcs), std::end(Arcs), [&](const Arc& known) { return warp == known.warp; });
  const bool fades = warp == "textFadeUp" || warp == "textFadeDown";
  const auto place = [&](Point p) -> Point {
    if (arc != std::end(Arcs)) {
      // Along the ellipse at its natural size, in the middle, and smaller where it would not fit.
      const double a = area.w / 2;
      const double b = area.h / 2;
      const double length =
          std::abs(arc->sweep) / 360 * pi * (3 * (a + b) - std::sqrt((3 * a + b) * (a + 3 * b)));
      const double scale = std::min(1.0, length / width);
      // Around the whole of it text begins at the start.
      const bool isRound = std::abs(arc->sweep) >= 360;
      const double along = isRound ? p.x * scale / length : 0.5 + (p.x - width / 2) * scale / length;
      const double angle = (arc->start + arc->sweep * along) * pi / 180;
      const double above = (arc->sweep > 0 ? -1 : 1) * p.y * scale;
      return {a - (a + above) * std::cos(angle), b - (b + above) * std::sin(angle)};
    }
    const double u = p.x / width;
    const double v = (p.y - ink.top) / (ink.bottom - ink.top);
    if (fades) {
      const double narrow = warp == "textFadeUp" ? 1 - v : v;
      return {area.w * (0.3333 * narrow + u * (1 - 0.6667 * narrow)), area.h * v};
    }
    if (envelope == std::end(Envelopes)) return {area.w * u, area.h * v};
    const double top = envelope->top(u);
    return {area.w * u, area.h * (top + v * (envelope->bottom(u) - top))};
  };

  noteUse(out, body);
  out << "<svg role=\"img\" style=\"left:" << area.x << "px;top:" << area.y << "px";
  if (std::abs(rotation) > 0.005) out << ";rotate:" << rotation << "deg";
  out << "\" width=\"" << area.w << "\" height=\"" << area.h << "\" aria-label=\"";
  for (const auto& paragraph : body.paragraphs) {
    for (const auto& run : paragraph.runs) out.text(run.text);
  }
  out << "\">";
  for (const auto& line : lines) {
    for (const auto& piece : line.pieces) {
      const Color* color = colorOf(piece.fill);
      if (color == nullptr) continue;
      out << "<path fill=\"" << *color << "\" d=\"";
      for (const auto& polygon : piece.polygons) {
        char op = 'M';
        for (const auto& point : polygon) {
          const auto placed = place(point);
          out << op << placed.x << ' ' << placed.y;
          op = 'L';
        }
        out << 'Z';
      }
      out << "\"/>";
    }
  }
  out << "</svg>";
  return true;
}

}  // namespace render
