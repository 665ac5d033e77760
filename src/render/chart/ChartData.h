#pragma once

#include <pugixml.hpp>
#include <string>

#include "render/chart/ChartModel.h"

// The values that a chart part keeps of its worksheet (c:numCache, c:strCache) or
// states itself (c:numLit, c:strLit).

namespace render {

/// At most 255 characters, which are what a worksheet allows in names and formats; every point may repeat
/// them.
std::string shortened(std::string_view text);

/// The text of a child's val attribute; empty without it.
std::string_view valueOf(pugi::xml_node parent, const char* child);
/// A child element such as c:overlay: stated without a value it means true.
bool flagOf(pugi::xml_node parent, const char* child, bool otherwise);
/// A finite number within a double's honest range.
std::optional<double> chartNumber(std::string_view text);

/// Reads data of one chart; counts what does not belong there.
class ChartData {
 public:
  /// Of c:val, c:xVal, c:yVal, c:bubbleSize. Gaps are NoValue.
  ChartNumbers numbers(pugi::xml_node source);
  /// Of c:cat; of several levels the innermost with the others above it.
  ChartCategories categories(pugi::xml_node source);
  /// Of c:tx: a series' name.
  static std::string text(pugi::xml_node tx);

  /// Texts where numbers belong and places out of range met so far.
  [[nodiscard]] int misfits() const { return misfits_; }

 private:
  /// Counts a place that is none or for which there is no room.
  bool isThere(std::size_t place);
  /// Of points of which `found` were met, with those behind them that have no value.
  static std::size_t countOf(pugi::xml_node points, std::size_t found);
  std::vector<std::string> texts(pugi::xml_node points);

  int misfits_ = 0;
  /// Places that may still be made; a part of a few bytes must not ask for gigabytes.
  std::size_t room_ = std::size_t{1} << 23U;
};

}  // namespace render
