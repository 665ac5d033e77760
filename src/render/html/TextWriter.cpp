#include "render/html/TextWriter.h"

#include <algorithm>
#include <cmath>

#include "render/svg/CssFill.h"
#include "render/text/FontMetrics.h"
#include "render/text/TextFit.h"
#include "render/text/TextReader.h"

namespace render {

namespace {

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

/// A part of a run that stands between two tabs.
struct Piece {
  const Run* run;
  std::string_view text;
};

/// What follows a tab up to the next one, and where the tab led.
struct Cell {
  TabStop stop;
  std::vector<Piece> pieces;
};

double widthOf(const std::vector<Piece>& pieces, double fontScale) {
  double width = 0;
  for (const auto& piece : pieces) {
    const auto& style = piece.run->style;
    const FaceName face{style.latin, style.bold.value_or(false), style.italic.value_or(false)};
    width += textWidth(face, piece.text) * style.size.value_or(18) * PxPerPoint * fontScale;
  }
  return width;
}

bool hasTabs(const Paragraph& paragraph) {
  return std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                     [](const Run& run) { return run.text.find('\t') != std::string::npos; });
}

/// The stop that a tab at `x` leads to: a stated one, the hanging indent, or one of the regular ones.
TabStop stopAfter(double x, const ParagraphStyle& style) {
  if (style.tabs) {
    for (const auto& stop : *style.tabs) {
      if (stop.position > x) return stop;
    }
  }
  const double margin = style.marginLeft.value_or(0);
  if (style.indent.value_or(0) < 0 && margin > x) return {margin};
  const double step = std::max(1.0, style.defaultTab.value_or(96));
  return {(std::floor(x / step) + 1) * step};
}

/// The runs from `from` up to a line break, which `from` then stands at, cut at their tabs.
std::vector<Cell> cellsOf(const Paragraph& paragraph, std::size_t& from, double start, double fontScale) {
  std::vector<Cell> cells(1);
  cells.front().stop.position = start;
  double x = start;
  for (; from < paragraph.runs.size() && paragraph.runs[from].kind != Run::Kind::Break; ++from) {
    std::string_view rest = paragraph.runs[from].text;
    for (auto tab = rest.find('\t'); tab != std::string_view::npos; tab = rest.find('\t')) {
      auto& cell = cells.back();
      if (tab > 0) cell.pieces.push_back({&paragraph.runs[from], rest.substr(0, tab)});
      rest.remove_prefix(tab + 1);
      const double width = widthOf(cell.pieces, fontScale);
      x = cell.stop.position;
      if (cell.stop.align == Align::Left) x += width;
      if (cell.stop.align == Align::Center) x += width / 2;
      cells.push_back({stopAfter(x, paragraph.style), {}});
    }
    if (!rest.empty()) cells.back().pieces.push_back({&paragraph.runs[from], rest});
  }
  return cells;
}

}  // namespace

TextWriter::Look TextWriter::lookOf(const RunStyle& style, const BodyProperties& properties) {
  const bool bold = style.bold.value_or(false);
  const auto& stack =
      fontStack(isSymbolFont(style.latin) ? std::string_view("Arial") : std::string_view(style.latin));
  Look look;
  look.size = style.size.value_or(18) * PxPerPoint * properties.fontScale;
  if (style.baseline.value_or(0) != 0) look.size *= RaisedSize;
  look.font = &stack;
  look.bold = bold;
  look.italic = style.italic.value_or(false);
  look.color = colorOf(style.fill);
  return look;
}

void TextWriter::look(const Look& look) {
  out_ << "font-family:" << look.font->css << ";font-size:" << fine(look.size) << "px;color:" << look.color;
  if (look.bold) out_ << ";font-weight:700";
  if (look.italic) out_ << ";font-style:italic";
}

void TextWriter::lookDifference(const Look& look, const Look& base) {
  if (look.font != base.font) out_ << "font-family:" << look.font->css << ';';
  if (look.size != base.size) out_ << "font-size:" << fine(look.size) << "px;";
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
  if (style.spacing && *style.spacing != 0) out_ << "letter-spacing:" << fine(*style.spacing) << "px;";
  if (style.highlight) out_ << "background:" << *style.highlight << ';';
  if (style.baseline && *style.baseline != 0) {
    // The shift is stated as a share of the full size.
    out_ << "line-height:0;vertical-align:" << *style.baseline / RaisedSize << "em;";
  }
  if (style.outline && isVisible(style.outline->fill)) {
    out_ << "-webkit-text-stroke:" << fine(std::max(style.outline->width, 0.5)) << "px "
         << colorOf(style.outline->fill) << ';';
  }
  if (style.shadow || style.glow) {
    out_ << "text-shadow:";
    if (style.shadow) {
      out_ << fine(style.shadow->dx) << "px " << fine(style.shadow->dy) << "px " << fine(style.shadow->blur)
           << "px " << style.shadow->color;
    }
    if (style.glow) {
      if (style.shadow) out_ << ',';
      // Twice, as a blur alone is paler than a glow.
      out_ << "0 0 " << fine(style.glow->radius / 2) << "px " << style.glow->color << ",0 0 "
           << fine(style.glow->radius) << "px " << style.glow->color;
    }
    out_ << ';';
  } else if (style.fill && !style.highlight && std::holds_alternative<Gradient>(*style.fill)) {
    cssFill(out_, *style.fill, {});
    out_ << "-webkit-background-clip:text;background-clip:text;-webkit-text-fill-color:transparent;";
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
  if (ownFont) look.font = &fontStack(*bullet.typeface);
  if (bullet.color) look.color = *bullet.color;
  look.italic = first.italic.value_or(false) && bullet.kind == Bullet::Kind::Number;
  // A first word too long for the line is broken beside its bullet, not below it.
  out_ << "<span class=\"k\"><span class=\"b\" style=\"";
  if (indent < 0) out_ << "min-width:" << fine(-indent) << "px;";
  if (paragraph.bulletPicture != nullptr) {
    out_ << "\">";
    pictureBullet(*paragraph.bulletPicture, look.size);
  } else {
    this->look(look);
    out_ << "\">";
    if (ownFont) out_.textUse().add(*look.font);
    out_.text(paragraph.bullet);
  }
  out_ << "</span></span>";
}

/// Stands on the baseline, as high as the text's size, without making its line higher.
void TextWriter::pictureBullet(const Asset& picture, double size) {
  const double shape = picture.height > 0 ? picture.width / picture.height : 1;
  out_ << "<img alt=\"\" src=\"" << assetPrefix_ << picture.name << "\" style=\"width:" << fine(size * shape)
       << "px;height:" << fine(size) << "px;margin-top:" << fine(-size) << "px\">";
}

void TextWriter::run(const Run& run, std::string_view text, const Look& look, const Look& base) {
  HtmlOut style;
  std::swap(style, out_);
  lookDifference(look, base);
  // Another font of the same size must not make the line higher.
  if (look.font != base.font && look.size == base.size) out_ << "line-height:0;";
  decoration(run.style);
  std::swap(style, out_);
  if (style.size() > 0) out_ << "<span style=\"" << style.str() << "\">";
  if (isSymbolFont(run.style.latin)) {
    out_.text(fromSymbolFont(run.style.latin, text));
  } else if (startsWithSymbol(text)) {
    out_.text(fromSymbolFont(isSymbolFont(run.style.symbol) ? run.style.symbol : "Wingdings", text));
  } else {
    splitByScript(text, [&](std::string_view piece, Script script) {
      const auto typeface = run.style.typeface(script);
      if (typeface == run.style.latin) {
        out_.textUse().add(*look.font);
        out_.text(piece);
      } else {
        const auto& font = fontStack(typeface);
        out_.textUse().add(font);
        out_ << "<span style=\"line-height:0;font-family:" << font.css << "\">";
        out_.text(piece) << "</span>";
      }
    });
  }
  if (style.size() > 0) out_ << "</span>";
}

void TextWriter::runs(const Paragraph& paragraph, const BodyProperties& properties, const Look& base) {
  const bool tabbed = hasTabs(paragraph);
  const auto& style = paragraph.style;
  double start = style.marginLeft.value_or(0) + (paragraph.bullet.empty() ? style.indent.value_or(0) : 0);
  for (std::size_t i = 0; i < paragraph.runs.size(); ++i) {
    const auto& run = paragraph.runs[i];
    if (run.kind == Run::Kind::Break) {
      out_ << "<br>";
      start = style.marginLeft.value_or(0);
    } else if (!tabbed) {
      this->run(run, run.text, lookOf(run.style, properties), base);
    } else {
      const auto cells = cellsOf(paragraph, i, start, properties.fontScale);
      for (std::size_t c = 0; c < cells.size(); ++c) {
        const bool isLast = c + 1 == cells.size();
        // The box ends where the next tab leads, so the browser's own fonts do not move what follows.
        if (!isLast) {
          out_ << "<span class=\"tab\" style=\"min-width:"
               << fine(std::max(0.0, cells[c + 1].stop.position - cells[c].stop.position)) << "px\">";
        }
        const auto align = cells[c].stop.align;
        if (align != Align::Left)
          out_ << (align == Align::Center ? "<span class=\"tc\"><span>" : "<span class=\"tr\"><span>");
        bool isOpen = align != Align::Left;
        for (const auto& piece : cells[c].pieces) {
          const auto look = lookOf(piece.run->style, properties);
          auto text = piece.text;
          if (isOpen && cells[c].stop.isDecimal) {
            const auto point = text.find_first_of(".,");
            if (point != std::string_view::npos) {
              this->run(*piece.run, text.substr(0, point), look, base);
              text.remove_prefix(point);
              out_ << "</span></span>";
              isOpen = false;
            }
          }
          this->run(*piece.run, text, look, base);
        }
        if (isOpen) out_ << "</span></span>";
        if (!isLast) out_ << "</span>";
      }
      --i;
    }
  }
  // A line break at the very end opens a line that a browser would not show.
  if (paragraph.runs.empty() || paragraph.runs.back().kind == Run::Kind::Break) out_ << "<br>";
}

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
  look(base);
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
  if (!paragraph.bullet.empty()) bullet(paragraph, paragraph.firstStyle(), firstLook, properties.fontScale);
  runs(paragraph, properties, base);
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
  out_ << "<div class=\"t\" style=\"left:" << box.x + (box.w - fine(box.w)) / 2
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
    out_ << (p.wrap ? "<div style=\"" : "<div class=\"n\" style=\"");
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
