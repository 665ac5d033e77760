#include "render/TextWriter.h"

#include <algorithm>
#include <cmath>

#include "render/FontMetrics.h"
#include "render/TextReader.h"

namespace render {

namespace {

/// Raised and lowered text is smaller by this.
constexpr double RaisedSize = 0.66;

Color colorOf(const std::optional<Fill>& fill) {
  if (!fill) return {};
  if (const auto* color = std::get_if<Color>(&*fill)) return *color;
  if (const auto* gradient = std::get_if<Gradient>(&*fill)) return gradient->stops.front().color;
  if (const auto* pattern = std::get_if<PatternFill>(&*fill)) return pattern->foreground;
  if (std::holds_alternative<NoFill>(*fill)) return {0, 0, 0, 0};
  return {};
}

/// Characters of the private area in which symbol fonts keep their glyphs.
bool startsWithSymbol(std::string_view text) {
  return text.size() >= 3 && text[0] == '\xEF' && static_cast<unsigned char>(text[1]) >= 0x80 &&
         static_cast<unsigned char>(text[1]) <= 0x83;
}

/// Of a script that the East Asian typeface is for: kana, ideographs, hangul.
bool isEastAsian(std::string_view text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0xE3 && byte <= 0xED) return true;
  }
  return false;
}

std::string_view typefaceOf(const RunStyle& style) { return style.latin; }

const RunStyle& firstStyle(const Paragraph& paragraph) {
  for (const auto& run : paragraph.runs) {
    if (run.kind == Run::Kind::Text) return run.style;
  }
  return paragraph.runs.empty() ? paragraph.style.run : paragraph.runs.front().style;
}

/// The style that the paragraph element carries: of its smallest run, for a line is
/// never lower than its paragraph's own font.
const RunStyle& baseStyle(const Paragraph& paragraph) {
  const RunStyle* base = nullptr;
  for (const auto& run : paragraph.runs) {
    if (run.kind != Run::Kind::Text) continue;
    if (base == nullptr || run.style.size.value_or(18) < base->size.value_or(18)) base = &run.style;
  }
  return base != nullptr ? *base : firstStyle(paragraph);
}

const RunStyle& largestStyle(const Paragraph& paragraph) {
  const RunStyle* largest = &firstStyle(paragraph);
  for (const auto& run : paragraph.runs) {
    if (run.kind == Run::Kind::Text && run.style.size.value_or(18) > largest->size.value_or(18))
      largest = &run.style;
  }
  return *largest;
}

double lineShareOf(const ParagraphStyle& style, const BodyProperties& properties) {
  const auto spacing = style.lineSpacing.value_or(Spacing{});
  return spacing.isShare ? std::max(0.2, spacing.value - properties.lineReduction) : 1;
}

/// A space between paragraphs in px; shares are of the text's size.
double gapOf(const std::optional<Spacing>& spacing, const Paragraph& paragraph,
             const BodyProperties& properties) {
  if (!spacing || spacing->value <= 0) return 0;
  if (!spacing->isShare) return spacing->value * properties.fontScale;
  const double share = spacing->value * (1 - properties.lineReduction);
  return share * firstStyle(paragraph).size.value_or(18) * PxPerPoint * properties.fontScale;
}

}  // namespace

TextWriter::Look TextWriter::lookOf(const RunStyle& style, const BodyProperties& properties) {
  const bool bold = style.bold.value_or(false);
  const auto& stack = fontStack(isSymbolFont(style.latin) ? std::string_view("Arial") : typefaceOf(style));
  Look look;
  look.size = style.size.value_or(18) * PxPerPoint * properties.fontScale;
  if (style.baseline.value_or(0) != 0) look.size *= RaisedSize;
  look.family = stack.css;
  look.bold = bold;
  look.italic = style.italic.value_or(false);
  look.color = colorOf(style.fill);
  return look;
}

void TextWriter::look(const Look& look) {
  out_ << "font-family:" << look.family << ";font-size:" << look.size << "px;color:" << look.color;
  if (look.bold) out_ << ";font-weight:700";
  if (look.italic) out_ << ";font-style:italic";
}

void TextWriter::lookDifference(const Look& look, const Look& base) {
  if (look.family != base.family) out_ << "font-family:" << look.family << ';';
  if (look.size != base.size) out_ << "font-size:" << look.size << "px;";
  if (look.color != base.color) out_ << "color:" << look.color << ';';
  if (look.bold != base.bold) out_ << "font-weight:" << (look.bold ? "700;" : "400;");
  if (look.italic != base.italic) out_ << "font-style:" << (look.italic ? "italic;" : "normal;");
}

void TextWriter::decoration(const RunStyle& style) {
  const auto underline = style.underline.value_or(Underline::None);
  const auto strike = style.strike.value_or(Strike::None);
  if (underline != Underline::None || strike != Strike::None) {
    out_ << "text-decoration:";
    if (underline != Underline::None) out_ << "underline ";
    if (strike != Strike::None) out_ << "line-through ";
    if (underline == Underline::Double || (underline == Underline::None && strike == Strike::Double))
      out_ << "double ";
    if (underline == Underline::Dotted) out_ << "dotted ";
    if (underline == Underline::Dashed) out_ << "dashed ";
    if (underline == Underline::Wavy) out_ << "wavy ";
    if (underline == Underline::Heavy) out_ << ".12em ";
    if (style.underlineColor && underline != Underline::None) out_ << *style.underlineColor;
    out_ << ';';
  }
  const auto caps = style.caps.value_or(Caps::None);
  if (caps == Caps::All) out_ << "text-transform:uppercase;";
  if (caps == Caps::Small) out_ << "font-variant-caps:small-caps;";
  if (style.spacing && *style.spacing != 0) out_ << "letter-spacing:" << *style.spacing << "px;";
  if (style.highlight) out_ << "background:" << *style.highlight << ';';
  if (style.baseline && *style.baseline != 0) {
    // The shift is stated as a share of the full size.
    out_ << "line-height:0;vertical-align:" << *style.baseline / RaisedSize << "em;";
  }
  if (style.outline && isVisible(style.outline->fill)) {
    out_ << "-webkit-text-stroke:" << std::max(style.outline->width, 0.5) << "px "
         << colorOf(style.outline->fill) << ';';
  }
  if (style.shadow) {
    out_ << "text-shadow:" << style.shadow->dx << "px " << style.shadow->dy << "px " << style.shadow->blur
         << "px " << style.shadow->color << ';';
  }
}

void TextWriter::bullet(const Paragraph& paragraph, const RunStyle& first, const Look& firstLook,
                        double fontScale) {
  const auto& bullet = paragraph.style.bullet;
  const double indent = paragraph.style.indent.value_or(0);
  const auto size = bullet.size.value_or(Spacing{});
  const bool ownFont =
      bullet.typeface && !isSymbolFont(*bullet.typeface) && bullet.kind == Bullet::Kind::Character;
  Look look = firstLook;
  look.size = size.isShare ? firstLook.size * size.value : size.value * fontScale;
  if (ownFont) look.family = fontStack(*bullet.typeface).css;
  if (bullet.color) look.color = *bullet.color;
  look.italic = first.italic.value_or(false) && bullet.kind == Bullet::Kind::Number;
  out_ << "<span class=\"b\" style=\"";
  if (indent < 0) {
    out_ << "min-width:" << -indent << "px;";
  } else {
    out_ << "margin-right:.2em;";
  }
  this->look(look);
  out_ << "\">";
  out_.text(paragraph.bullet) << "</span>";
}

void TextWriter::run(const Run& run, std::string_view text, const Look& look, const Look& base) {
  HtmlOut style;
  std::swap(style, out_);
  lookDifference(look, base);
  decoration(run.style);
  if (!run.style.eastAsian.empty() && isEastAsian(text) && run.style.eastAsian != run.style.latin) {
    out_ << "font-family:" << fontStack(run.style.eastAsian).css << ';';
  }
  std::swap(style, out_);
  if (style.size() > 0) out_ << "<span style=\"" << style.str() << "\">";
  if (isSymbolFont(run.style.latin)) {
    out_.text(fromSymbolFont(run.style.latin, text));
  } else if (startsWithSymbol(text)) {
    out_.text(fromSymbolFont(isSymbolFont(run.style.symbol) ? run.style.symbol : "Wingdings", text));
  } else {
    out_.text(text);
  }
  if (style.size() > 0) out_ << "</span>";
}

void TextWriter::runs(const Paragraph& paragraph, const BodyProperties& properties, const Look& base) {
  const auto& stops = paragraph.style.tabs;
  const bool ownStops = stops && !stops->empty();
  // Text before a tab stop lies in a box that ends there.
  double reached = paragraph.style.marginLeft.value_or(0) +
                   (paragraph.bullet.empty() ? paragraph.style.indent.value_or(0) : 0);
  const double lineStart = paragraph.style.marginLeft.value_or(0);
  const auto stopAfter = [&](double x) {
    if (ownStops) {
      for (const auto& stop : *stops) {
        if (stop.position > x) return stop.position;
      }
    }
    const double step = std::max(1.0, paragraph.style.defaultTab.value_or(96));
    return (std::floor(x / step) + 1) * step;
  };
  const auto tabFollows = [&](std::size_t index, std::size_t at) {
    for (; index < paragraph.runs.size(); ++index, at = 0) {
      const auto& run = paragraph.runs[index];
      if (run.kind == Run::Kind::Break) return false;
      if (run.text.find('\t', at) != std::string::npos) return true;
    }
    return false;
  };
  bool inBox = false;
  const auto openBox = [&](std::size_t index, std::size_t at) {
    if (!ownStops || !tabFollows(index, at)) return;
    const double stop = stopAfter(reached);
    out_ << "<span class=\"tab\" style=\"min-width:" << stop - reached << "px\">";
    reached = stop;
    inBox = true;
  };
  const auto closeBox = [&] {
    if (inBox) out_ << "</span>";
    inBox = false;
  };

  openBox(0, 0);
  for (std::size_t i = 0; i < paragraph.runs.size(); ++i) {
    const auto& run = paragraph.runs[i];
    if (run.kind == Run::Kind::Break) {
      out_ << "<br>";
      reached = lineStart;
      openBox(i + 1, 0);
      continue;
    }
    const auto look = lookOf(run.style, properties);
    std::string_view rest = run.text;
    std::size_t at = 0;
    for (auto tab = rest.find('\t'); inBox && tab != std::string_view::npos; tab = rest.find('\t')) {
      if (tab > 0) this->run(run, rest.substr(0, tab), look, base);
      rest.remove_prefix(tab + 1);
      at += tab + 1;
      closeBox();
      openBox(i, at);
    }
    if (!rest.empty()) this->run(run, rest, look, base);
  }
  closeBox();
  // A line break at the very end opens a line that a browser would not show.
  if (paragraph.runs.empty() || paragraph.runs.back().kind == Run::Kind::Break) out_ << "<br>";
}

double TextWriter::paragraph(const Paragraph& paragraph, const BodyProperties& properties, double gap,
                             bool isLast) {
  const auto& style = paragraph.style;
  const double lineShare = lineShareOf(style, properties);
  const auto& baseRun = baseStyle(paragraph);
  const auto base = lookOf(baseRun, properties);
  const auto firstLook = lookOf(firstStyle(paragraph), properties);
  const bool isFixed = style.lineSpacing && !style.lineSpacing->isShare;

  // Browsers centre the font's box in the line; in a presentation all that is added to a line or taken from
  // it is above the text.
  const auto& largest = largestStyle(paragraph);
  const double size = lookOf(largest, properties).size;
  const auto& metrics = fontStack(typefaceOf(largest)).metrics;
  const double line = isFixed ? style.lineSpacing->value : SingleLine * lineShare * size;
  const double shift = line / 2 - (BelowBaseline + (metrics.ascent - metrics.descent) / 2) * size;

  out_ << "<p style=\"";
  look(base);
  if (isFixed) {
    out_ << ";line-height:" << style.lineSpacing->value << "px";
  } else {
    out_ << ";line-height:" << SingleLine * lineShare;
  }
  const double top = gap + shift;
  if (std::abs(top) >= 0.005) out_ << ";margin-top:" << top << "px";
  if (isLast && std::abs(shift) >= 0.005) out_ << ";margin-bottom:" << -shift << "px";
  const bool rightToLeft = style.rightToLeft.value_or(false);
  const double left = style.marginLeft.value_or(0);
  const double right = style.marginRight.value_or(0);
  if (left > 0) out_ << (rightToLeft && right == 0 ? ";padding-right:" : ";padding-left:") << left << "px";
  if (right > 0) out_ << ";padding-right:" << right << "px";
  if (style.indent.value_or(0) != 0) out_ << ";text-indent:" << std::max(*style.indent, -left) << "px";
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
  if (style.defaultTab && *style.defaultTab >= 1) out_ << ";tab-size:" << *style.defaultTab << "px";
  out_ << (rightToLeft ? "\" dir=\"rtl\">" : "\">");
  if (!paragraph.bullet.empty()) bullet(paragraph, firstStyle(paragraph), firstLook, properties.fontScale);
  runs(paragraph, properties, base);
  out_ << "</p>";
  return -shift;
}

void TextWriter::paragraphs(const TextBody& body) {
  double carried = 0;
  const Paragraph* previous = nullptr;
  for (const auto& paragraph : body.paragraphs) {
    double gap = carried;
    if (previous != nullptr) {
      gap += gapOf(previous->style.spaceAfter, *previous, body.properties) +
             gapOf(paragraph.style.spaceBefore, paragraph, body.properties);
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

  out_ << "<div class=\"t\" style=\"left:" << box.x << "px;top:" << box.y << "px;width:" << box.w
       << "px;height:" << box.h << "px;padding:" << top << "px " << right << "px " << bottom << "px " << left
       << "px";
  if (p.anchor != Anchor::Top)
    out_ << ";justify-content:" << (p.anchor == Anchor::Center ? "center" : "flex-end");
  if (p.direction == TextDirection::Stacked) out_ << ";writing-mode:vertical-rl;text-orientation:upright";
  if (p.direction == TextDirection::EastAsianDown) out_ << ";writing-mode:vertical-rl";
  if (std::abs(rotation) > 0.005) out_ << ";transform:rotate(" << rotation << "deg)";
  out_ << "\">";

  const auto align = body.paragraphs.front().style.align.value_or(Align::Left);
  const bool inner = p.anchorCenter || !p.wrap || p.columns > 1;
  if (inner) {
    out_ << (p.wrap ? "<div style=\"" : "<div class=\"n\" style=\"");
    if (!p.wrap) {
      const bool centre = p.anchorCenter || align == Align::Center;
      out_ << "width:max-content;align-self:"
           << (centre                  ? "center"
               : align == Align::Right ? "flex-end"
                                       : "flex-start");
    } else if (p.columns > 1) {
      out_ << "columns:" << p.columns << ";column-gap:" << p.columnGap << "px;column-fill:auto;height:100%";
    } else {
      out_ << "align-self:center;max-width:100%";
    }
    out_ << "\">";
  }
  paragraphs(body);
  out_ << (inner ? "</div></div>" : "</div>");
}

}  // namespace render
