#include "render/html/TextWriter.h"

#include <algorithm>
#include <cmath>

#include "render/html/PageContract.h"
#include "render/text/FontMetrics.h"
#include "render/text/TextFit.h"

// Where paragraphs stand: blocks, line heights, the gaps between paragraphs.

namespace render {

namespace {

/// Of the first paragraph that shows.
Align alignOf(const TextBody& body) {
  for (const auto& paragraph : body.paragraphs) {
    if (!paragraph.runs.empty())
      return paragraph.style.align.value_or(paragraph.style.rightToLeft.value_or(false) ? Align::Right
                                                                                        : Align::Left);
  }
  return Align::Left;
}

/// Whether a shape was made as wide as its unwrapped text: what little they differ is the fonts' doing, and
/// is shared by both sides.
bool isMadeToFit(const TextBody& body, double width) {
  return body.properties.fitsShape && std::abs(TextExtent(body).width() - width) <= 0.25 * width;
}

}  // namespace

double TextWriter::shiftOf(const Paragraph& paragraph, const BodyProperties& properties) {
  const auto& largest = paragraph.largestStyle();
  const double size = lookOf(largest, properties).size;
  const auto& metrics = fontStack(largest.latin).metrics;
  const bool isFixed = paragraph.style.lineSpacing && !paragraph.style.lineSpacing->isShare;
  // Lines closer than single ones are cut above and below alike, four to one.
  const double lineShare = properties.lineShare(paragraph.style);
  const double below = (!isFixed && lineShare < 1 ? SingleLine * lineShare / 5 : BelowBaseline) * size;
  return properties.lineHeight(paragraph.style, size) / 2 - below -
         (metrics.ascent - metrics.descent) / 2 * size;
}

double TextWriter::paragraph(const Paragraph& paragraph, const BodyProperties& properties, double gap,
                             bool isLast) {
  const auto& style = paragraph.style;
  const double lineShare = properties.lineShare(style);
  const auto& baseRun = paragraph.smallestStyle();
  const auto base = lookOf(baseRun, properties);
  const auto firstLook = lookOf(paragraph.firstStyle(), properties);
  const bool isFixed = style.lineSpacing && !style.lineSpacing->isShare;

  const double shift = shiftOf(paragraph, properties);

  out_ << "<p style=\"";
  runs_.look(base);
  if (isFixed) {
    out_ << ";line-height:" << fine(style.lineSpacing->value) << "px";
  } else {
    out_ << ";line-height:" << SingleLine * lineShare;
  }
  const double top = gap + shift;
  if (std::abs(top) >= 0.005) out_ << ";margin-top:" << fine(top) << "px";
  if (isLast && std::abs(shift) >= 0.005) out_ << ";margin-bottom:" << fine(-shift) << "px";
  const bool rightToLeft = style.rightToLeft.value_or(false);
  const double left = style.marginLeft.value_or(0);
  const double right = style.marginRight.value_or(0);
  if (left > 0)
    out_ << (rightToLeft && right == 0 ? ";padding-right:" : ";padding-left:") << fine(left) << "px";
  if (right > 0) out_ << ";padding-right:" << fine(right) << "px";
  if (style.indent.value_or(0) != 0) out_ << ";text-indent:" << fine(std::max(*style.indent, -left)) << "px";
  switch (style.align.value_or(rightToLeft ? Align::Right : Align::Left)) {
    case Align::Left:
      if (rightToLeft) out_ << ";text-align:left";
      break;
    case Align::Center:
      out_ << ";text-align:center";
      break;
    case Align::Right:
      out_ << ";text-align:right";
      break;
    case Align::Justify:
      out_ << ";text-align:justify";
      break;
    case Align::Distribute:
      out_ << ";text-align:justify;text-align-last:justify";
      break;
  }
  out_ << (rightToLeft ? "\" dir=\"rtl\">" : "\">");
  if (!paragraph.bullet.empty())
    runs_.bullet(paragraph, paragraph.firstStyle(), firstLook, properties.fontScale);
  runs_.runs(paragraph, properties, base);
  out_ << "</p>";
  return -shift;
}

void TextWriter::paragraphs(const TextBody& body, double carried) {
  out_.textUse().add(body.timeShown);
  const Paragraph* previous = nullptr;
  for (const auto& paragraph : body.paragraphs) {
    double gap = carried;
    if (previous != nullptr) {
      gap += body.properties.gap(previous->style.spaceAfter, *previous) +
             body.properties.gap(paragraph.style.spaceBefore, paragraph);
    }
    carried = this->paragraph(paragraph, body.properties, gap, &paragraph == &body.paragraphs.back());
    previous = &paragraph;
  }
}

void TextWriter::block(const TextBody& body, const Rect& area, double rotation) {
  if (body.isEmpty()) return;
  const auto& p = body.properties;
  Rect box = area;
  double left = p.left;
  double top = p.top;
  double right = p.right;
  double bottom = p.bottom;
  const bool down = p.direction == TextDirection::Down;
  const bool up = p.direction == TextDirection::Up;
  if (down || up) {
    // Set in a box lying on its side; the insets stay with the sides of the shape.
    box = {area.x + (area.w - area.h) / 2, area.y + (area.h - area.w) / 2, area.h, area.w};
    rotation += down ? 90 : -90;
    left = down ? p.top : p.bottom;
    top = down ? p.right : p.left;
    right = down ? p.bottom : p.top;
    bottom = down ? p.left : p.right;
  }
  // Insets that leave no room would push the text aside; it keeps what there is.
  if (left + right > box.w && p.wrap) left = right = 0;

  // Scaled down around its centre, which is the area's.
  out_ << "<div class=\"" << page::Text << "\" style=\"left:" << box.x + (box.w - fine(box.w)) / 2
       << "px;top:" << box.y + (box.h - fine(box.h)) / 2 << "px;width:" << fine(box.w)
       << "px;height:" << fine(box.h) << "px;padding:" << fine(top) << "px " << fine(right) << "px "
       << fine(bottom) << "px " << fine(left) << "px";
  if (p.anchor != Anchor::Top)
    out_ << ";justify-content:" << (p.anchor == Anchor::Center ? "center" : "flex-end");
  if (p.direction == TextDirection::Stacked) out_ << ";writing-mode:vertical-rl;text-orientation:upright";
  if (p.direction == TextDirection::EastAsianDown) out_ << ";writing-mode:vertical-rl";
  if (std::abs(rotation) > 0.005) out_ << ";rotate:" << rotation << "deg";
  out_ << "\">";

  double carried = 0;
  const bool inner = p.anchorCenter || !p.wrap || p.columns > 1;
  if (inner) {
    out_ << "<div ";
    if (!p.wrap) out_ << "class=\"" << page::Unwrapped << "\" ";
    out_ << "style=\"";
    if (!p.wrap) {
      const auto align = alignOf(body);
      const bool centred = p.anchorCenter || isMadeToFit(body, box.w - left - right);
      if (!centred) out_ << "min-width:100%;";
      out_ << "width:max-content;align-self:"
           << (centred || align == Align::Center ? "center"
               : align == Align::Right           ? "flex-end"
                                                 : "flex-start");
    } else if (p.columns > 1) {
      out_ << "columns:" << p.columns << ";column-gap:" << fine(p.columnGap)
           << "px;column-fill:auto;height:100%";
      // Every column starts as the first one does.
      carried = -shiftOf(body.paragraphs.front(), p);
      out_ << ";position:relative;top:" << fine(-carried) << "px";
    } else {
      out_ << "align-self:center;max-width:100%";
    }
    out_ << "\">";
  }
  paragraphs(body, carried);
  out_ << (inner ? "</div></div>" : "</div>");
}

}  // namespace render
