#include "render/scene/SceneDump.h"

#include <algorithm>

// Boxes, their outlines, effects and tables as lines of text.

namespace render {

namespace {

/// Of an outline's path, points and curves.
constexpr std::size_t MostCommandsShown = 60;
constexpr std::size_t MostColumns = 60;

std::string words(const OutlinePath& path) {
  static constexpr std::string_view fills[] = {"unfilled",         "",       "lighter",
                                               "a little lighter", "darker", "a little darker"};
  std::string text = "path";
  if (path.fill != PathFill::Normal) text += " " + std::string(fills[static_cast<std::size_t>(path.fill)]);
  if (!path.stroke) text += " without line";
  const std::size_t shown = std::min(path.commands.size(), MostCommandsShown);
  for (std::size_t i = 0; i < shown; ++i) {
    const auto& command = path.commands[i];
    text += std::string(" ") + command.op;
    for (int at = 0; at < operands(command.op); ++at) {
      // Of an arc, turn and flags lie between its radii and its end.
      const bool isLength = command.op != 'A' || at < 2 || at > 4;
      if (at > 0) text += ' ';
      text += isLength ? points(command.v[at]) : number(command.v[at]);
    }
  }
  if (shown < path.commands.size())
    text += " … " + number(static_cast<double>(path.commands.size())) + " in all";
  return text;
}

std::string words(const Displacement& moved) {
  std::string text = " moved " + points(moved.dx) + "," + points(moved.dy);
  if (moved.isMove()) return text;
  text += " scaled " + percent(moved.scaleX) + " " + percent(moved.scaleY);
  if (moved.skewX != 0 || moved.skewY != 0)
    text += " skewed " + number(moved.skewX) + "° " + number(moved.skewY) + "°";
  return text + " from " + percent(moved.alignX) + " " + percent(moved.alignY);
}

std::string kindOf(const Box& box) {
  if (box.chart) return "chart";
  if (box.table) return "table";
  return box.children.empty() ? "shape" : "group";
}

bool draws(const Box& box) {
  return isVisible(box.fill) || isVisible(box.under) || box.line || box.table || box.chart || box.media ||
         !box.children.empty() || !box.text.isEmpty();
}

std::string words(const Box& box) {
  std::string text =
      kindOf(box) + " " + std::to_string(box.id) + " " + inQuotes(box.name) + " at " + area(box.frame);
  if (box.rotation != 0) text += " turned " + number(box.rotation) + "°";
  if (box.flipX) text += " flipped x";
  if (box.flipY) text += " flipped y";
  if (box.hidden) text += " hidden";
  if (!draws(box)) return text + " draws nothing";
  if (box.outline.isRectangle) text += " rect";
  if (isVisible(box.under)) text += " under " + words(box.under);
  if (isVisible(box.fill)) text += " fill " + words(box.fill);
  if (box.line) text += " line " + words(*box.line);
  return text;
}

/// The borders of a cell that it has, each side by its name unless all are alike.
std::string words(const std::optional<Line> (&borders)[4]) {
  static constexpr std::string_view names[] = {"left", "top", "right", "bottom"};
  std::string sides[4];
  for (int side = 0; side < 4; ++side) {
    if (borders[side] && isVisible(borders[side]->fill)) sides[side] = words(*borders[side]);
  }
  if (!sides[0].empty() && std::count(std::begin(sides), std::end(sides), sides[0]) == 4)
    return " borders " + sides[0];
  std::string text;
  for (int side = 0; side < 4; ++side) {
    if (!sides[side].empty()) text += " " + std::string(names[side]) + " " + sides[side];
  }
  return text;
}

void dumpEffects(DumpLines& lines, int depth, const Box& box) {
  const Effects& effects = box.effects;
  const auto add = [&](const std::string& text) { lines.add(depth, text); };
  if (box.overlay) add("overlay " + std::string(box.overlay->blending) + " " + words(box.overlay->fill));
  const auto shadow = [&](const char* name, const Shadow& cast) {
    add(name + words(cast.color) + words(cast) + " blur " + points(cast.blur));
  };
  if (effects.shadow) shadow("shadow ", *effects.shadow);
  if (effects.innerShadow) shadow("inner shadow ", *effects.innerShadow);
  if (effects.glow) add("glow " + words(effects.glow->color) + " " + points(effects.glow->radius));
  if (effects.reflection) {
    const auto& image = *effects.reflection;
    add("reflection " + percent(image.startAlpha) + " at " + percent(image.startPosition) + " to " +
        percent(image.endAlpha) + " at " + percent(image.endPosition) + words(image) + " blur " +
        points(image.blur));
  }
  if (effects.bevel) add("bevel " + points(effects.bevel->width));
  if (effects.softEdge > 0) add("soft edge " + points(effects.softEdge));
  if (effects.blur > 0) add("blur " + points(effects.blur));
  if (!effects.isEmpty() && effectsReachText(box)) add("the effects are those of all that is inside");
}

void dumpTable(DumpLines& lines, int depth, const Table& table) {
  std::string columns = "columns";
  const std::size_t shown = std::min(table.columns.size(), MostColumns);
  for (std::size_t i = 0; i < shown; ++i) columns += " " + points(table.columns[i]);
  if (shown < table.columns.size())
    columns += " … " + number(static_cast<double>(table.columns.size())) + " in all";
  if (table.rightToLeft) columns += " from right to left";
  if (isVisible(table.fill)) columns += " fill " + words(table.fill);
  lines.add(depth, columns);
  for (const auto& row : table.rows) {
    lines.add(depth, "row " + points(row.height));
    for (const auto& cell : row.cells) {
      std::string text = "cell " + number(cell.column + 1);
      if (cell.columnSpan > 1 || cell.rowSpan > 1)
        text += " over " + number(cell.columnSpan) + "x" + number(cell.rowSpan);
      if (isVisible(cell.fill)) text += " fill " + words(cell.fill);
      lines.add(depth + 1, text + words(cell.borders));
      dumpText(lines, depth + 2, cell.text, nullptr, 0);
    }
  }
}

void dumpBox(DumpLines& lines, int depth, const Box& box) {
  lines.add(depth, words(box));
  if (!draws(box)) return;
  ++depth;
  if (!box.outline.isRectangle) {
    for (const auto& path : box.outline.paths) lines.add(depth, words(path));
  }
  dumpEffects(lines, depth, box);
  if (box.media) {
    lines.add(depth, std::string(box.media->isVideo ? "film " : "sound ") + box.media->asset->name +
                         (box.media->loops ? " again and again" : "") + (box.media->isMuted ? " muted" : ""));
  }
  dumpText(lines, depth, box.text, &box.textArea, box.textRotation);
  if (box.table) dumpTable(lines, depth, *box.table);
  if (box.chart) dumpChart(lines, depth, *box.chart);
  for (const auto& child : box.children) dumpBox(lines, depth, child);
}

}  // namespace

void SceneDump::slide(int index, double width, double height, const Fill& background) {
  lines_.add(0, "slide " + std::to_string(index) + " " + points(width) + "x" + points(height) +
                    " background " + words(background));
}

void SceneDump::add(const Box& box) {
  if (!section_.empty()) lines_.add(0, section_);
  section_.clear();
  dumpBox(lines_, 1, box);
}

}  // namespace render
