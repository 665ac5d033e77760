#pragma once

#include <vector>

#include "render/chart/ChartModel.h"
#include "render/chart/ChartScale.h"
#include "render/chart/ChartSlots.h"
#include "render/chart/ChartTexts.h"

namespace render {

/// An axis that series use, scaled to what they hold.
struct ScaledAxis {
  const ChartAxis* axis = nullptr;
  bool isHorizontal = false;
  bool isCategory = false;
  /// Of value axes.
  ChartScale scale;
  std::vector<double> ticks;
  std::string format;
  /// Of category axes.
  ChartSlots slots;
  const ChartCategories* categories = nullptr;
  /// The categories lie between tick marks, not on them.
  bool isBetween = true;
};

/// The axes of a chart; shares the model's numbering. Axes that no series uses have a
/// null `axis`.
class ChartAxes {
 public:
  /// `width` and `height` are the chart's, in px; the model must outlive it.
  ChartAxes(const ChartModel& model, double width, double height, ChartTexts& texts);

  [[nodiscard]] const std::vector<ScaledAxis>& all() const { return axes_; }
  [[nodiscard]] const ScaledAxis& at(int index) const { return axes_[static_cast<std::size_t>(index)]; }

  /// Text of a value axis' tick.
  std::string tickText(const ScaledAxis& axis, double value);
  /// The value of the axis that `crossing` crosses at which it does so.
  [[nodiscard]] double crossingValue(const ChartAxis& crossing) const;
  /// The same as a share of the plot's width or height, from the left or bottom.
  [[nodiscard]] double crossingShare(const ChartAxis& crossing) const;

 private:
  void use(const ChartGroup& group);
  void fitCategories(ScaledAxis& axis);
  void scaleValues(std::size_t index, double width, double height);
  [[nodiscard]] double plotRoom(bool isHorizontal, double width, double height) const;

  const ChartModel& model_;
  ChartTexts& texts_;
  std::vector<ScaledAxis> axes_;
};

/// The value a series shows in each of its points: sums for stacks, shares for
/// stacks of one hundred percent, as they stand in ChartGroup::series.
std::vector<std::vector<double>> shownValues(const ChartGroup& group, ChartGaps gaps);

}  // namespace render
