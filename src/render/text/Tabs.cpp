#include "render/text/Tabs.h"

#include <algorithm>
#include <cmath>

#include "render/text/FontMetrics.h"

namespace render {

namespace {

double widthOf(const std::vector<TabPiece>& pieces, double fontScale) {
  double width = 0;
  for (const auto& piece : pieces) {
    const auto& style = piece.run->style;
    const FaceName face{style.latin, style.bold.value_or(false), style.italic.value_or(false)};
    width += textWidth(face, piece.text) * style.size.value_or(18) * PxPerPoint * fontScale;
  }
  return width;
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

}  // namespace

bool hasTabs(const Paragraph& paragraph) {
  return std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                     [](const Run& run) { return run.text.find('\t') != std::string::npos; });
}

std::vector<TabCell> tabCells(const Paragraph& paragraph, std::size_t& from, double start, double fontScale) {
  std::vector<TabCell> cells(1);
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

}  // namespace render
