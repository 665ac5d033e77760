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
// lengths are px, all places relative to the parent.

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

struct Box {
  /// Of p:cNvPr; 0 when unreadable.
  std::uint32_t id = 0;
  std::string name;
  Rect frame;
  double rotation = 0;  // degrees clockwise around the centre
  bool flipX = false;   // of the outline, not of what is inside
  bool flipY = false;
  bool hidden = false;

  Outline outline;
  /// Behind `fill`: what a picture with holes lets through.
  Fill under;
  Fill fill;
  std::optional<Line> line;
  Effects effects;
  std::optional<Overlay> overlay;

  TextBody text;
  Rect textArea;
  double textRotation = 0;

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

struct TableCell {
  int column = 0;
  int columnSpan = 1;
  int rowSpan = 1;
  Fill fill;
  /// Left, top, right, bottom.
  std::optional<Line> borders[4];
  TextBody text;
};

struct TableRow {
  double height = 0;
  std::vector<TableCell> cells;
};

struct Table {
  std::vector<double> columns;  // widths
  std::vector<TableRow> rows;
  Fill fill;
  bool rightToLeft = false;
};

}  // namespace render
