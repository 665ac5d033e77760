#include "render/text/TextFit.h"

#include <algorithm>
#include <cmath>

#include "render/text/FontMetrics.h"
#include "render/text/Script.h"

// How much room text takes, and how far type and lines are made smaller until it fits.

namespace render {

namespace {

constexpr double ScaleStep = 0.075;
constexpr double SmallestScale = 0.25;
constexpr double ReductionStep = 0.1;
constexpr double LargestReduction = 0.2;

bool breaksAround(char32_t c) { return scriptOf(c, Script::Latin) == Script::EastAsian; }

}  // namespace

TextExtent::TextExtent(const TextBody& body) {
  paragraphs_.reserve(body.paragraphs.size());
  for (const auto& paragraph : body.paragraphs) paragraphs_.push_back(split(paragraph));
}

TextExtent::Lines TextExtent::split(const Paragraph& paragraph) {
  Lines lines;
  lines.paragraph = &paragraph;
  lines.size = paragraph.firstStyle().size.value_or(18) * PxPerPoint;
  Word word;
  const auto finish = [&] {
    if (word.width > 0 || word.space > 0 || word.breaks) lines.words.push_back(word);
    word = {};
  };
  for (const auto& run : paragraph.runs) {
    const double size = run.style.size.value_or(18) * PxPerPoint;
    word.size = std::max(word.size, size);
    if (run.kind == Run::Kind::Break) {
      word.breaks = true;
      finish();
      continue;
    }
    const double drawn = run.style.baseline.value_or(0) != 0 ? size * RaisedSize : size;
    const double spacing = run.style.spacing.value_or(0);
    splitByScript(run.text, [&](std::string_view piece, Script script) {
      const FaceName face{run.style.typeface(script), run.style.bold.value_or(false),
                          run.style.italic.value_or(false)};
      const bool capitals = run.style.caps.value_or(Caps::None) == Caps::All;
      for (std::size_t at = 0; at < piece.size();) {
        const auto start = at;
        const char32_t c = basic::DecodeUtf8(piece, at);
        char upper = 0;
        auto written = piece.substr(start, at - start);
        if (capitals && c >= 'a' && c <= 'z') {
          upper = static_cast<char>(c - 32);
          written = {&upper, 1};
        }
        const double width = textWidth(face, written) * drawn + spacing;
        if (c == ' ' || c == '\t') {
          word.size = std::max(word.size, size);
          word.space += c == '\t' ? paragraph.style.defaultTab.value_or(96) / 2 : width;
          continue;
        }
        if (word.space > 0 || breaksAround(c)) finish();
        word.size = std::max(word.size, size);
        word.width += width;
        if (c == '-' || breaksAround(c)) finish();
      }
    });
  }
  finish();
  return lines;
}

double TextExtent::width() const {
  double widest = 0;
  for (const auto& lines : paragraphs_) {
    const auto& style = lines.paragraph->style;
    const double start = style.marginLeft.value_or(0) + std::min(0.0, style.indent.value_or(0));
    double line = start;
    double end = start;
    for (const auto& word : lines.words) {
      end = line + word.width;
      widest = std::max(widest, end);
      line = word.breaks ? start : end + word.space;
    }
  }
  return widest;
}

double TextExtent::height(double width, const BodyProperties& properties) const {
  const double scale = properties.fontScale;
  double height = 0;
  const Paragraph* previous = nullptr;
  for (const auto& lines : paragraphs_) {
    const auto& paragraph = *lines.paragraph;
    const auto& style = paragraph.style;
    if (previous != nullptr) {
      height += properties.gap(previous->style.spaceAfter, *previous) +
                properties.gap(style.spaceBefore, paragraph);
    }
    previous = &paragraph;
    const double room = std::max(1.0, width - style.marginLeft.value_or(0) - style.marginRight.value_or(0));
    double size = lines.words.empty() ? lines.size : 0;
    double used = paragraph.bullet.empty() ? style.indent.value_or(0) : 0;
    bool isFirst = true;
    const auto endLine = [&] {
      height += properties.lineHeight(style, (size > 0 ? size : lines.size) * scale);
      size = 0;
      used = 0;
      isFirst = true;
    };
    for (const auto& word : lines.words) {
      const double wordWidth = word.width * scale;
      if (!isFirst && used + wordWidth > room) endLine();
      size = std::max(size, word.size);
      isFirst = isFirst && wordWidth <= 0;
      used += wordWidth;
      // A word that is wider than a line is broken wherever the line ends.
      for (; used > room && room > word.size * scale; used -= room)
        height += properties.lineHeight(style, size * scale);
      used += word.space * scale;
      if (word.breaks) endLine();
    }
    const bool isOpen = lines.words.empty() || !lines.words.back().breaks || used > 0;
    if (isOpen || lines.words.back().breaks) endLine();
  }
  return height;
}

void fitText(TextBody& body, double width, double height, double tolerance) {
  auto& p = body.properties;
  if (!p.shrinks || !p.wrap || width <= 0 || height <= 0 || body.isEmpty()) return;
  const TextExtent extent(body);
  const double columnWidth = (width - p.columnGap * (p.columns - 1)) / p.columns;
  const double room = height * p.columns * (1 + tolerance);
  const auto fits = [&] { return extent.height(columnWidth, p) <= room; };
  if (fits()) return;
  const double statedReduction = p.lineReduction;
  for (double scale = p.fontScale; scale >= SmallestScale; scale -= ScaleStep) {
    p.fontScale = scale;
    for (p.lineReduction = statedReduction; p.lineReduction < LargestReduction + ReductionStep / 2;
         p.lineReduction += ReductionStep) {
      if (fits()) return;
    }
    p.lineReduction = LargestReduction;
  }
}

}  // namespace render
