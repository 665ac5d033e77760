#pragma once

#include "render/chart/ChartModel.h"
#include "render/paint/PaintReader.h"

namespace render {

/// What chart elements look like that state nothing themselves: one of the 48
/// numbered styles (ECMA-376 part 1, 21.2.2.227) over the deck's theme.
class ChartStyle {
 public:
  /// `number` is 1 to 48; others count as 2.
  ChartStyle(int number, const PaintContext& context);

  /// The colour of series or point `index` of `count`.
  [[nodiscard]] Color color(std::size_t index, std::size_t count) const;
  /// What fills bars, slices, areas and bubbles of that colour.
  [[nodiscard]] Fill fill(const Color& color) const;
  /// The line of a line or scatter series.
  [[nodiscard]] Line seriesLine(const Color& color) const;
  /// Of automatic markers, px.
  [[nodiscard]] double markerSize() const;
  /// Axes and major gridlines.
  [[nodiscard]] Line axisLine() const;
  [[nodiscard]] Line minorGridLine() const;
  [[nodiscard]] Color text() const;
  /// Dark styles fill the chart; others let the slide through.
  [[nodiscard]] Fill area() const;

 private:
  [[nodiscard]] Color themed(std::string_view name) const;
  [[nodiscard]] bool isDark() const { return number_ > 40; }

  int number_;
  const PaintContext& context_;
};

/// The symbol that a series without one gets.
const char* automaticSymbol(std::size_t index);

}  // namespace render
