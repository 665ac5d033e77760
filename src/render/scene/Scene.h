#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "render/geometry/Geometry.h"
#include "render/paint/Overlay.h"
#include "render/text/Text.h"

// What is to be drawn, resolved and laid out; the last stage before the page. All
// lengths are px, all places relative to the parent. Pictures belong to Assets and
// must outlive the boxes; everything else is the box's own.

namespace render {

struct ChartModel;
struct Table;

/// A film or sound that plays while its slide is shown.
struct Media {
  const Asset* asset = nullptr;
  bool isVideo = true;
  bool loops = false;
  bool isMuted = false;
};

/// A shape, picture, group or frame, or a part of one (ECMA-376 part 1, 19.3.1).
struct Box {
  /// Of p:cNvPr; 0 when unreadable. Ought to be unique on a slide and is not always.
  std::uint32_t id = 0;
  std::string name;
  Rect frame;
  double rotation = 0;  // degrees clockwise around the centre
  bool flipX = false;   // of the outline, not of what is inside
  bool flipY = false;
  /// Not drawn; everything below is set all the same.
  bool hidden = false;

  /// Empty in groups and frames without a fill.
  Outline outline;
  /// Behind `fill`: what a picture with holes lets through.
  Fill under;
  Fill fill;
  /// Unset where no line is drawn.
  std::optional<Line> line;
  Effects effects;
  std::optional<Overlay> overlay;

  TextBody text;
  Rect textArea;
  double textRotation = 0;  // degrees clockwise around the area's centre, besides the box's own

  /// Of a group or diagram, in drawing order; their places are the group's.
  std::vector<Box> children;
  std::shared_ptr<const Table> table;
  std::optional<Media> media;
  std::shared_ptr<const ChartModel> chart;
};

/// Effects of a group are those of its image, effects of a shape without a fill
/// those of its text, too.
inline bool effectsReachText(const Box& box) {
  if (!box.children.empty()) return true;
  return !isVisible(box.fill) && !isVisible(box.under) && !box.text.isEmpty();
}

/// A cell that is drawn; those that a merged one covers are left out.
struct TableCell {
  int column = 0;  // of the grid, from 0
  int columnSpan = 1;
  int rowSpan = 1;
  Fill fill;
  /// Left, top, right, bottom.
  std::optional<Line> borders[4];
  TextBody text;
};

struct TableRow {
  double height = 0;  // at least; text makes it higher
  std::vector<TableCell> cells;
};

struct Table {
  std::vector<double> columns;  // widths
  std::vector<TableRow> rows;
  Fill fill;  // behind all cells
  bool rightToLeft = false;
};

}  // namespace render
