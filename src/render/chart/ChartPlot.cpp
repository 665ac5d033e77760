#include "render/chart/ChartPlot.h"

namespace render {

namespace {

/// The values of a series by the slots of its axis.
std::vector<double> spread(const std::vector<double>& values, const ChartSlots& slots) {
  std::vector<double> column;
  column.reserve(slots.categoryOf.size());
  for (const auto category : slots.categoryOf) {
    column.push_back(category < values.size() ? values[category] : NoValue);
  }
  return column;
}

}  // namespace

ChartPlot::ChartPlot(const ChartModel& model, double width, double height)
    : model_(model), texts_(model.from1904), axes_(model, width, height, texts_) {
  for (const auto& group : model.groups) seriesCount_ += group.series.size();
  mostPoints_ = pointsKept(seriesCount_);
  keptSlots_.resize(axes_.all().size());
  for (std::size_t i = 0; i < keptSlots_.size(); ++i) {
    const auto& scaled = axes_.all()[i];
    if (scaled.axis == nullptr || !scaled.isCategory) continue;
    std::vector<std::vector<double>> columns;
    for (const auto& group : model.groups) {
      if (group.categoryAxis != static_cast<int>(i)) continue;
      for (const auto& series : group.series) columns.push_back(spread(series.values.values, scaled.slots));
    }
    std::vector<const std::vector<double>*> pointers;
    pointers.reserve(columns.size());
    for (const auto& column : columns) pointers.push_back(&column);
    keptSlots_[i] = thinned(pointers, mostPoints_);
  }
}

}  // namespace render
