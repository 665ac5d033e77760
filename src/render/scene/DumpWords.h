#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "render/paint/Paint.h"
#include "render/scene/Scene.h"

// The words that scenes are written in (SceneDump.h).

namespace render {

/// At most two decimals, in the shortest form; "-" for what is no number.
std::string number(double value);
/// A length in px as points.
std::string points(double px);
/// "x,y wxh" in points.
std::string area(const Rect& px);
/// A share as "25%".
std::string percent(double share);
/// In quotation marks, the first 120 characters; quotation marks, backslashes and control characters are
/// escaped, bytes that are no UTF-8 replaced.
std::string inQuotes(std::string_view text);

/// "#rrggbb", with the opacity where it is not whole: "#rrggbb/50%".
std::string words(const Color& color);
/// "none", a colour, or the kind of fill and all that it states.
std::string words(const Fill& fill);
/// Width in points and fill, then what differs from a plain line.
std::string words(const Line& line);

/// Lines with indents of two blanks a level, up to a bound.
class DumpLines {
 public:
  /// Bytes. A small deck may ask for any number of lines, as layouts are taken over by every shape.
  static constexpr std::size_t Most = 4U << 20U;

  void add(int depth, std::string_view line);
  /// Whether a line had no room; nor have those that follow.
  [[nodiscard]] bool isFull() const { return isFull_; }
  /// When lines had no room, the last one says so.
  std::string take();

 private:
  std::string text_;
  bool isFull_ = false;
};

/// What a text states, and its paragraphs and runs. `place` is where it lies in its box; null for cells,
/// which it fills. Nothing of a text that shows nothing.
void dumpText(DumpLines& lines, int depth, const TextBody& text, const Rect* place, double rotation);
/// Groups, their series with a few of their values, axes, titles and legend.
void dumpChart(DumpLines& lines, int depth, const ChartModel& chart);

}  // namespace render
