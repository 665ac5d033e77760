#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "render/text/Text.h"

// A line of text in columns: what its tabs lead to (ECMA-376 part 1, 21.1.2.2.13, 21.1.2.2.14).

namespace render {

/// A part of a run that stands between two tabs; lives as long as the paragraph.
struct TabPiece {
  const Run* run;
  std::string_view text;
};

/// What follows a tab up to the next one, and where the tab led.
struct TabCell {
  TabStop stop;
  std::vector<TabPiece> pieces;
};

bool hasTabs(const Paragraph& paragraph);

/// The runs from `from` up to a line break, which `from` then stands at, cut at their tabs. The first cell
/// begins `start` px from the text's left edge. Widths are those of this machine's fonts at `fontScale` times
/// their size.
std::vector<TabCell> tabCells(const Paragraph& paragraph, std::size_t& from, double start, double fontScale);

}  // namespace render
