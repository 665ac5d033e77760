#include "render/html/RunWriter.h"

#include <algorithm>

#include "render/html/PageContract.h"
#include "render/svg/CssFill.h"
#include "render/text/TextReader.h"

// What stands in a line: runs in their look, bullets, tabs, line breaks.

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

std::string_view strike(const RunStyle& style) {
  const auto strike = style.strike.value_or(Strike::None);
  if (strike == Strike::None) return {};
  return strike == Strike::Double ? "text-decoration:line-through double;" : "text-decoration:line-through;";
}

}  // namespace

RunLook lookOf(const RunStyle& style, const BodyProperties& properties) {
  const bool bold = style.bold.value_or(false);
  const auto& stack =
      fontStack(isSymbolFont(style.latin) ? std::string_view("Arial") : std::string_view(style.latin));
  RunLook look;
  look.size = style.size.value_or(18) * PxPerPoint * properties.fontScale;
  if (style.baseline.value_or(0) != 0) look.size *= RaisedSize;
  look.font = &stack;
  look.bold = bold;
  look.italic = style.italic.value_or(false);
  look.color = colorOf(style.fill);
  return look;
}

void RunWriter::look(const RunLook& look) {
  out_ << "font-family:" << look.font->css << ";font-size:" << fine(look.size) << "px;color:" << look.color;
  if (look.bold) out_ << ";font-weight:700";
  if (look.italic) out_ << ";font-style:italic";
}

void RunWriter::lookDifference(const RunLook& look, const RunLook& base) {
  if (look.font != base.font) out_ << "font-family:" << look.font->css << ';';
  if (look.size != base.size) out_ << "font-size:" << fine(look.size) << "px;";
  if (look.color != base.color) out_ << "color:" << look.color << ';';
  if (look.bold != base.bold) out_ << "font-weight:" << (look.bold ? "700;" : "400;");
  if (look.italic != base.italic) out_ << "font-style:" << (look.italic ? "italic;" : "normal;");
}

void RunWriter::decoration(const RunStyle& style) {
  const auto underline = style.underline.value_or(Underline::None);
  if (underline != Underline::None) {
    out_ << "text-decoration:underline ";
    if (underline == Underline::Double) out_ << "double ";
    if (underline == Underline::Dotted) out_ << "dotted ";
    if (underline == Underline::Dashed) out_ << "dashed ";
    if (underline == Underline::Wavy) out_ << "wavy ";
    if (underline == Underline::Heavy) out_ << ".12em ";
    if (style.underlineColor) out_ << *style.underlineColor;
    out_ << ';';
  } else {
    out_ << strike(style);
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

void RunWriter::bullet(const Paragraph& paragraph, const RunStyle& first, const RunLook& firstLook,
                       double fontScale) {
  const auto& bullet = paragraph.style.bullet;
  const double indent = paragraph.style.indent.value_or(0);
  const auto size = bullet.size.value_or(Spacing{});
  const bool ownFont =
      bullet.typeface && !isSymbolFont(*bullet.typeface) && bullet.kind == Bullet::Kind::Character;
  RunLook look = firstLook;
  look.size = size.isShare ? firstLook.size * size.value : size.value * fontScale;
  if (ownFont) look.font = &fontStack(*bullet.typeface);
  if (bullet.color) look.color = *bullet.color;
  look.italic = first.italic.value_or(false) && bullet.kind == Bullet::Kind::Number;
  // A first word too long for the line is broken beside its bullet, not below it.
  out_ << "<span class=\"" << page::BulletWord << "\"><span class=\"" << page::Bullet << "\" style=\"";
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
void RunWriter::pictureBullet(const Asset& picture, double size) {
  const double shape = picture.height > 0 ? picture.width / picture.height : 1;
  out_ << "<img alt=\"\" src=\"" << assetPrefix_ << picture.name << "\" style=\"width:" << fine(size * shape)
       << "px;height:" << fine(size) << "px;margin-top:" << fine(-size) << "px\">";
}

void RunWriter::run(const Run& run, std::string_view text, const RunLook& look, const RunLook& base) {
  HtmlOut style;
  std::swap(style, out_);
  lookDifference(look, base);
  // Another font of the same size must not make the line higher.
  if (look.font != base.font && look.size == base.size) out_ << "line-height:0;";
  decoration(run.style);
  std::swap(style, out_);
  if (style.size() > 0) out_ << "<span style=\"" << style.str() << "\">";
  // The kind and colour of an underline would be the strike's as well.
  const bool isStruckToo = run.style.underline.value_or(Underline::None) != Underline::None &&
                           run.style.strike.value_or(Strike::None) != Strike::None;
  if (isStruckToo) out_ << "<span style=\"" << strike(run.style) << "\">";
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
  if (isStruckToo) out_ << "</span>";
  if (style.size() > 0) out_ << "</span>";
}

void RunWriter::tabbedLine(const std::vector<TabCell>& cells, const BodyProperties& properties,
                           const RunLook& base) {
  for (std::size_t c = 0; c < cells.size(); ++c) {
    const auto& [stop, pieces] = cells[c];
    const bool isLast = c + 1 == cells.size();
    // The box ends where the next tab leads, so the browser's own fonts do not move what follows.
    if (!isLast) {
      out_ << "<span class=\"" << page::Tab
           << "\" style=\"min-width:" << fine(std::max(0.0, cells[c + 1].stop.position - stop.position))
           << "px\">";
    }
    bool isOpen = stop.align != Align::Left;
    if (isOpen) {
      out_ << "<span class=\"" << (stop.align == Align::Center ? page::TabCentre : page::TabRight)
           << "\"><span>";
    }
    for (const auto& piece : pieces) {
      const auto look = lookOf(piece.run->style, properties);
      auto text = piece.text;
      const auto point = isOpen && stop.isDecimal ? text.find_first_of(".,") : std::string_view::npos;
      if (point != std::string_view::npos) {
        run(*piece.run, text.substr(0, point), look, base);
        text.remove_prefix(point);
        out_ << "</span></span>";
        isOpen = false;
      }
      run(*piece.run, text, look, base);
    }
    if (isOpen) out_ << "</span></span>";
    if (!isLast) out_ << "</span>";
  }
}

void RunWriter::runs(const Paragraph& paragraph, const BodyProperties& properties, const RunLook& base) {
  const bool tabbed = hasTabs(paragraph);
  const auto& style = paragraph.style;
  double start = style.marginLeft.value_or(0) + (paragraph.bullet.empty() ? style.indent.value_or(0) : 0);
  for (std::size_t i = 0; i < paragraph.runs.size();) {
    const auto& run = paragraph.runs[i];
    if (run.kind == Run::Kind::Break) {
      out_ << "<br>";
      start = style.marginLeft.value_or(0);
      ++i;
    } else if (tabbed) {
      tabbedLine(tabCells(paragraph, i, start, properties.fontScale), properties, base);
    } else {
      this->run(run, run.text, lookOf(run.style, properties), base);
      ++i;
    }
  }
  // A line break at the very end opens a line that a browser would not show.
  if (paragraph.runs.empty() || paragraph.runs.back().kind == Run::Kind::Break) out_ << "<br>";
}

}  // namespace render
