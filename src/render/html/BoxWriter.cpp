#include "render/html/BoxWriter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "render/html/ChartWriter.h"
#include "render/html/PageContract.h"
#include "render/html/TextWriter.h"
#include "render/html/WordArt.h"
#include "render/svg/CssFill.h"
#include "render/svg/SvgWriter.h"

// A box as an element: its frame, the drawing of its outline, then what lies inside, in drawing order.

namespace render {

namespace {

const char* borderStyle(const Line& line) {
  if (line.dashes.empty()) return line.strands > 1 ? "double" : "solid";
  return line.dashes.front() > 1 ? "dashed" : "dotted";
}

/// 0 when there is none to be drawn.
double borderWidth(const std::optional<Line>& border) {
  if (!border || !std::holds_alternative<Color>(border->fill)) return 0;
  return std::max(border->width, 0.75);
}

/// Effects of all that a box shows, as far as there are properties for them.
void cssEffects(HtmlOut& out, const Box& box) {
  const auto& effects = box.effects;
  const auto& mirror = effects.reflection;
  const bool reachText = effectsReachText(box);
  if (mirror && (reachText || !box.text.isEmpty())) {
    const auto shade = [&](double alpha, double position) {
      out << ',' << Color{0, 0, 0, alpha} << ' ' << (1 - position) * 100 << '%';
    };
    out << ";-webkit-box-reflect:below " << mirror->dy << "px linear-gradient(#0000";
    shade(mirror->endAlpha, mirror->endPosition);
    shade(mirror->startAlpha, mirror->startPosition);
    out << ')';
  }
  if (!reachText) return;
  out << ";filter:";
  if (effects.blur > 0) out << "blur(" << effects.blur / 2 << "px) ";
  if (effects.glow) {
    out << "drop-shadow(0 0 " << effects.glow->radius / 4 << "px " << effects.glow->color
        << ") drop-shadow(0 0 " << effects.glow->radius / 2 << "px " << effects.glow->color << ") ";
  }
  if (effects.shadow) {
    out << "drop-shadow(" << effects.shadow->dx << "px " << effects.shadow->dy << "px "
        << effects.shadow->blur / 2 << "px " << effects.shadow->color << ')';
  }
}

}  // namespace

void BoxWriter::frame(const Box& box) {
  out_ << " style=\"left:" << box.frame.x << "px;top:" << box.frame.y << "px;width:" << box.frame.w
       << "px;height:" << box.frame.h << "px";
  if (std::abs(box.rotation) > 0.005) out_ << ";transform:rotate(" << box.rotation << "deg)";
  if (!box.effects.isEmpty()) cssEffects(out_, box);
  out_ << '"';
}

void BoxWriter::write(const Box& box, const std::string& elementId, bool isLive) {
  out_ << "<div class=\"" << page::Shape;
  if (isLive) out_ << ' ' << page::Live;
  out_ << "\" id=\"";
  out_.text(elementId) << '"';
  if (box.hidden) {
    out_ << " hidden></div>";
    return;
  }
  frame(box);
  out_ << '>';
  content(box, elementId);
  out_ << "</div>";
}

void BoxWriter::writeAnonymous(const Box& box, const std::string& idPrefix) {
  if (box.hidden) return;
  out_ << "<div class=\"" << page::Shape << '"';
  frame(box);
  out_ << '>';
  content(box, idPrefix);
  out_ << "</div>";
}

void BoxWriter::content(const Box& box, const std::string& idPrefix) {
  SvgWriter(out_, idPrefix, assetPrefix_).draw(box);
  if (box.media) media(*box.media);
  if (!writeWordArt(out_, box.text, box.textArea, box.textRotation))
    TextWriter(out_, assetPrefix_).block(box.text, box.textArea, box.textRotation);
  if (box.table) table(*box.table);
  if (box.chart) chart(box, idPrefix + "-chart");
  int part = 0;
  for (const auto& child : box.children) writeAnonymous(child, idPrefix + "." + std::to_string(++part));
}

/// The page plays what is marked while its slide is in front.
void BoxWriter::media(const Media& media) {
  const std::string_view element = media.isVideo ? "video" : "audio";
  out_ << '<' << element << " class=\"" << page::Media << "\" src=\"" << assetPrefix_ << media.asset->name
       << "\" preload=\"auto\" playsinline " << page::Plays;
  if (media.loops) out_ << " loop";
  if (media.isMuted) out_ << " muted";
  out_ << "></" << element << '>';
}

void BoxWriter::cell(const TableCell& cell) {
  const auto& p = cell.text.properties;
  out_ << "<td";
  if (cell.columnSpan > 1) out_ << " colspan=\"" << cell.columnSpan << '"';
  if (cell.rowSpan > 1) out_ << " rowspan=\"" << cell.rowSpan << '"';
  // Lines between cells take no room of their own; a browser gives each neighbour half of them.
  const double insets[] = {p.left, p.top, p.right, p.bottom};
  double padding[4];
  for (int i = 0; i < 4; ++i) padding[i] = std::max(0.0, insets[i] - borderWidth(cell.borders[i]) / 2);
  out_ << " style=\"padding:" << fine(padding[1]) << "px " << fine(padding[2]) << "px " << fine(padding[3])
       << "px " << fine(padding[0]) << "px;";
  if (p.anchor != Anchor::Top)
    out_ << "vertical-align:" << (p.anchor == Anchor::Center ? "middle;" : "bottom;");
  if (p.direction == TextDirection::Down) out_ << "writing-mode:vertical-rl;";
  if (p.direction == TextDirection::Up) out_ << "writing-mode:sideways-lr;";
  static constexpr const char* sides[] = {"left", "top", "right", "bottom"};
  for (int i = 0; i < 4; ++i) {
    const auto& border = cell.borders[i];
    const double width = borderWidth(border);
    if (width <= 0) continue;
    const auto* color = std::get_if<Color>(&border->fill);
    out_ << "border-" << sides[i] << ':' << fine(width) << "px " << borderStyle(*border) << ' ' << *color
         << ';';
  }
  cssFill(out_, cell.fill, assetPrefix_);
  out_ << "\">";
  TextWriter(out_, assetPrefix_).paragraphs(cell.text);
  out_ << "</td>";
}

void BoxWriter::table(const Table& table) {
  out_ << "<table style=\"width:" << fine(std::accumulate(table.columns.begin(), table.columns.end(), 0.0))
       << "px;";
  cssFill(out_, table.fill, assetPrefix_);
  out_ << (table.rightToLeft ? "\" dir=\"rtl\">" : "\">") << "<colgroup>";
  for (const double width : table.columns) out_ << "<col style=\"width:" << fine(width) << "px\">";
  out_ << "</colgroup>";
  for (const auto& row : table.rows) {
    out_ << "<tr style=\"height:" << fine(row.height) << "px\">";
    for (const auto& c : row.cells) cell(c);
    out_ << "</tr>";
  }
  out_ << "</table>";
}

/// The element draws itself by its script, which takes over from there.
void BoxWriter::chart(const Box& box, const std::string& id) {
  out_ << '<' << page::Chart << " id=\"";
  out_.text(id) << "\" role=\"img\" style=\"width:" << box.frame.w << "px;height:" << box.frame.h << "px\" "
                << page::ChartData << "=\"";
  out_.text(chartDescription(*box.chart, box.frame.w, box.frame.h, assetPrefix_))
      << "\"></" << page::Chart << '>';
}

void BoxWriter::background(const Fill& fill, const std::string& idPrefix, double width, double height) {
  SvgWriter(out_, idPrefix, assetPrefix_).background(fill, width, height);
}

}  // namespace render
