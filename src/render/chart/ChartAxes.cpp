#include "render/chart/ChartAxes.h"

#include <algorithm>
#include <cmath>

// Which axes the series of a chart use, how far they run, where they cross, and what stacks add up to.

namespace render {

namespace {

bool isXy(const ChartGroup& group) {
  return group.kind == ChartKind::Scatter || group.kind == ChartKind::Bubble;
}

struct Extent {
  double low = NoValue;
  double high = NoValue;
  void add(double v) {
    if (std::isnan(v)) return;
    if (!(low <= v)) low = v;
    if (!(high >= v)) high = v;
  }
};

void extend(Extent& extent, const ChartGroup& group, ChartGaps gaps) {
  const auto values = shownValues(group, gaps);
  if (group.stacking == ChartStacking::None) {
    for (const auto& column : values) {
      for (const double v : column) extent.add(v);
    }
  } else {
    std::size_t count = 0;
    for (const auto& column : values) count = std::max(count, column.size());
    const bool isBar = group.kind == ChartKind::Bar;
    for (std::size_t i = 0; i < count; ++i) {
      double up = 0;
      double down = 0;
      for (const auto& column : values) {
        const double v = i < column.size() ? column[i] : NoValue;
        if (std::isnan(v)) continue;
        // Bars pile up on both sides of zero, lines and areas on each other.
        (isBar && v < 0 ? down : up) += v;
        extent.add(isBar && v < 0 ? down : up);
      }
    }
  }
  for (const auto& series : group.series) {
    for (const auto& bars : series.errors) {
      if (bars.isHorizontal) continue;
      for (std::size_t i = 0; i < std::min(bars.plus.size(), series.values.values.size()); ++i) {
        extent.add(series.values.values[i] + bars.plus[i]);
        extent.add(series.values.values[i] - bars.minus[i]);
      }
    }
  }
}

}  // namespace

std::vector<std::vector<double>> shownValues(const ChartGroup& group, ChartGaps gaps) {
  std::vector<std::vector<double>> values;
  std::size_t count = 0;
  for (const auto& series : group.series) {
    values.push_back(series.values.values);
    count = std::max(count, values.back().size());
  }
  const bool fillsGaps = gaps == ChartGaps::Zero || group.kind == ChartKind::Area;
  if (fillsGaps && !isXy(group)) {
    for (auto& column : values) {
      column.resize(count, 0);
      std::replace_if(
          column.begin(), column.end(), [](double v) { return std::isnan(v); }, 0.0);
    }
  }
  if (group.stacking != ChartStacking::Percent) return values;
  for (std::size_t i = 0; i < count; ++i) {
    double whole = 0;
    for (const auto& column : values) {
      if (i < column.size() && !std::isnan(column[i])) whole += std::abs(column[i]);
    }
    for (auto& column : values) {
      if (i < column.size() && whole > 0) column[i] /= whole;
    }
  }
  return values;
}

ChartAxes::ChartAxes(const ChartModel& model, double width, double height, ChartTexts& texts)
    : model_(model), texts_(texts), axes_(model.axes.size()) {
  for (const auto& group : model.groups) use(group);
  for (auto& axis : axes_) {
    if (axis.axis != nullptr && axis.isCategory) fitCategories(axis);
  }
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    if (axes_[i].axis != nullptr && !axes_[i].isCategory) scaleValues(i, width, height);
  }
}

void ChartAxes::use(const ChartGroup& group) {
  const auto take = [&](int place, bool isHorizontal, bool isCategory) {
    if (place < 0) return;
    auto& axis = axes_[static_cast<std::size_t>(place)];
    if (axis.axis != nullptr) return;
    axis.axis = &model_.axes[static_cast<std::size_t>(place)];
    axis.isHorizontal = isHorizontal;
    axis.isCategory = isCategory;
  };
  take(group.categoryAxis, !group.isHorizontal, !isXy(group));
  take(group.valueAxis, group.isHorizontal, false);
}

void ChartAxes::fitCategories(ScaledAxis& axis) {
  static const ChartCategories none;
  axis.categories = &none;
  std::size_t count = 0;
  const auto index = static_cast<int>(&axis - axes_.data());
  for (const auto& group : model_.groups) {
    if (group.categoryAxis != index) continue;
    if (group.valueAxis >= 0)
      axis.isBetween = model_.axes[static_cast<std::size_t>(group.valueAxis)].crossesBetween;
    if (group.kind == ChartKind::Bar) axis.isBetween = true;
    for (const auto& series : group.series) {
      count = std::max(count, series.values.values.size());
      if (axis.categories->size() == 0) axis.categories = &series.categories;
    }
  }
  axis.slots = slotsOf(*axis.axis, *axis.categories, count, model_.from1904);
}

/// About what the plot's inner rectangle will measure.
double ChartAxes::plotRoom(bool isHorizontal, double width, double height) const {
  const auto& place = model_.plotPlace;
  const auto stated = isHorizontal ? place.w : place.h;
  const double whole = isHorizontal ? width : height;
  if (stated && place.isInner) return *stated * whole;
  const double line = model_.font.size.value_or(10) * PxPerPoint * 1.2;
  double room = whole - 2 * line;
  if (!isHorizontal && model_.title && !model_.title->overlays) room -= 2 * line;
  if (model_.legend && !model_.legend->overlays) {
    const auto side = model_.legend->side;
    const bool isBeside = side != ChartLegend::Side::Top && side != ChartLegend::Side::Bottom;
    if (isBeside && isHorizontal) {
      std::size_t longest = 0;
      for (const auto& group : model_.groups) {
        for (const auto& series : group.series) longest = std::max(longest, series.name.size());
      }
      room -= std::min(width / 3, line * (2 + 0.45 * static_cast<double>(longest)));
    } else if (!isBeside && !isHorizontal) {
      room -= 1.5 * line;
    }
  }
  return std::max(room, whole / 4);
}

void ChartAxes::scaleValues(std::size_t index, double width, double height) {
  auto& scaled = axes_[index];
  const auto& axis = *scaled.axis;
  Extent extent;
  bool isPercent = false;
  bool holdsBubbles = false;
  for (const auto& group : model_.groups) {
    holdsBubbles = holdsBubbles || group.kind == ChartKind::Bubble;
    if (group.valueAxis == static_cast<int>(index)) {
      extend(extent, group, model_.gaps);
      isPercent = isPercent || group.stacking == ChartStacking::Percent;
      if (scaled.format.empty()) scaled.format = group.series.front().values.format;
    } else if (isXy(group) && group.categoryAxis == static_cast<int>(index)) {
      for (const auto& series : group.series) {
        for (const double x : series.x.values) extent.add(x);
      }
      if (scaled.format.empty()) scaled.format = group.series.front().x.format;
    }
  }
  if (holdsBubbles) {
    // They are a quarter of the plot at most, and their middles are what is counted.
    const double margin = (extent.high - extent.low) / 8;
    extent.add(extent.low < 0 ? extent.low - margin : extent.low);
    extent.add(extent.high + margin);
  }
  if (isPercent) scaled.format = "0%";
  if (axis.format) scaled.format = *axis.format;

  ChartScaleWish wish{axis.min, axis.max, axis.major, axis.minor, axis.logBase};
  wish.isPercent = isPercent;
  if (!std::isnan(extent.low)) {
    wish.low = extent.low;
    wish.high = extent.high;
  }
  // The spokes of a radar are half as long as its plot is wide or high.
  const bool isRadar = std::any_of(model_.groups.begin(), model_.groups.end(),
                                   [](const auto& group) { return group.kind == ChartKind::Radar; });
  const double room = isRadar ? std::min(plotRoom(true, width, height), plotRoom(false, width, height)) / 2
                              : plotRoom(scaled.isHorizontal, width, height);
  const double size = axis.font.size.value_or(10) * PxPerPoint;
  // Fewer steps until their labels stand clear of each other.
  for (wish.mostSteps = 10;; --wish.mostSteps) {
    scaled.scale = chooseScale(wish);
    scaled.ticks = scaled.scale.ticks();
    if (wish.mostSteps <= 2 || axis.major || axis.logBase || scaled.ticks.size() < 3) break;
    double needed = (isRadar ? 1 : 1.4) * 1.2 * size;
    if (scaled.isHorizontal) {
      std::size_t longest = 0;
      for (const double tick : scaled.ticks) longest = std::max(longest, tickText(scaled, tick).size());
      needed = 2.5 * 0.5 * size * static_cast<double>(longest);
    }
    if (room / static_cast<double>(scaled.ticks.size() - 1) >= needed) break;
  }
}

std::string ChartAxes::tickText(const ScaledAxis& axis, double value) {
  return texts_.number(value / axis.axis->displayUnit, axis.format);
}

double ChartAxes::crossingValue(const ChartAxis& crossing) const {
  if (crossing.crossed < 0) return 0;
  const auto& scale = at(crossing.crossed).scale;
  switch (crossing.crossing) {
    case ChartAxis::Crossing::Min:
      return scale.min;
    case ChartAxis::Crossing::Max:
      return scale.max;
    case ChartAxis::Crossing::At:
      return std::clamp(crossing.crossingAt, scale.min, scale.max);
    default:
      return std::clamp(scale.logBase ? scale.min : 0.0, scale.min, scale.max);
  }
}

double ChartAxes::crossingShare(const ChartAxis& crossing) const {
  if (crossing.crossed < 0) return 0;
  const auto& crossed = at(crossing.crossed);
  if (crossed.axis == nullptr) return 0;
  double share = 0;
  if (crossed.isCategory) {
    const auto count = static_cast<double>(crossed.slots.categoryOf.size());
    if (crossing.crossing == ChartAxis::Crossing::Max) share = 1;
    if (crossing.crossing == ChartAxis::Crossing::At && count > 1) {
      share = (crossing.crossingAt - 1) / (crossed.isBetween ? count : count - 1);
    }
  } else {
    const auto& scale = crossed.scale;
    const double value = crossingValue(crossing);
    share = scale.logBase ? std::log(value / scale.min) / std::log(scale.max / scale.min)
                          : (value - scale.min) / (scale.max - scale.min);
  }
  share = std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0;
  return crossed.axis->isReversed ? 1 - share : share;
}

}  // namespace render
