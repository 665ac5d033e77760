#pragma once

#include <cstddef>
#include <vector>

#include "render/chart/ChartAxes.h"
#include "render/chart/ChartModel.h"
#include "render/chart/ChartTexts.h"

namespace render {

/// A chart at a size: its axes scaled, and of very many points those that a page gets. The model must outlive
/// it.
class ChartPlot {
 public:
  /// `width` and `height` are the chart's, in px.
  ChartPlot(const ChartModel& model, double width, double height);
  ChartPlot(const ChartPlot&) = delete;
  ChartPlot& operator=(const ChartPlot&) = delete;

  [[nodiscard]] const ChartModel& model() const { return model_; }
  [[nodiscard]] ChartTexts& texts() { return texts_; }
  [[nodiscard]] ChartAxes& axes() { return axes_; }

  /// Of all groups.
  [[nodiscard]] std::size_t seriesCount() const { return seriesCount_; }
  /// How many points a series keeps.
  [[nodiscard]] std::size_t mostPoints() const { return mostPoints_; }
  /// Which slots of a category axis, by its place in the model, are drawn; ascending.
  [[nodiscard]] const std::vector<std::size_t>& keptSlots(int axis) const {
    return keptSlots_[static_cast<std::size_t>(axis)];
  }

 private:
  const ChartModel& model_;
  ChartTexts texts_;
  ChartAxes axes_;
  std::size_t seriesCount_ = 0;
  std::size_t mostPoints_ = 0;
  std::vector<std::vector<std::size_t>> keptSlots_;
};

}  // namespace render
