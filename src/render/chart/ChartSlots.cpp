#include "render/chart/ChartSlots.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>

// Categories and dates as slots along an axis, and the choice among very many points.

namespace render {

namespace {

using Unit = ChartAxis::Unit;

/// Slots that an axis of dates may have; beyond them its dates are names.
constexpr double MostSlots = 5000;

constexpr std::chrono::sys_days Day0{std::chrono::year{1899} / 12 / 30};

std::chrono::year_month_day dateOf(double serial) {
  return Day0 + std::chrono::days{static_cast<int>(std::floor(serial))};
}

/// The number of the day, month or year that a serial lies in.
double slotNumber(double serial, Unit unit) {
  if (unit == Unit::Days) return std::floor(serial);
  const auto date = dateOf(serial);
  const int year = static_cast<int>(date.year());
  if (unit == Unit::Years) return year;
  return year * 12 + static_cast<int>(static_cast<unsigned>(date.month())) - 1;
}

double serialOf(double slot, Unit unit) {
  if (unit == Unit::Days) return slot;
  const int number = static_cast<int>(slot);
  const int year = unit == Unit::Years ? number : number / 12;
  const auto month = std::chrono::month{unit == Unit::Years ? 1U : static_cast<unsigned>(number % 12) + 1U};
  const auto date = std::chrono::sys_days{std::chrono::year{year} / month / 1};
  return static_cast<double>((date - Day0).count());
}

/// The shortest distance of two dates tells what the axis counts in.
Unit automaticUnit(std::vector<double> dates) {
  std::sort(dates.begin(), dates.end());
  double least = 1e9;
  for (std::size_t i = 1; i < dates.size(); ++i) {
    const double distance = dates[i] - dates[i - 1];
    if (distance > 0.5) least = std::min(least, distance);
  }
  return least >= 365 && least < 1e9 ? Unit::Years : least >= 28 && least < 1e9 ? Unit::Months : Unit::Days;
}

}  // namespace

std::size_t pointsKept(std::size_t seriesCount) {
  return std::clamp(MostPointsOfChart / std::max<std::size_t>(seriesCount, 1), std::size_t{50},
                    MostPointsOfSeries);
}

std::vector<std::size_t> thinned(const std::vector<const std::vector<double>*>& columns, std::size_t most) {
  std::size_t count = 0;
  for (const auto* column : columns) count = std::max(count, column->size());
  std::vector<std::size_t> kept;
  if (count <= most) {
    kept.resize(count);
    std::iota(kept.begin(), kept.end(), std::size_t{0});
    return kept;
  }
  const std::size_t runs = std::max<std::size_t>(most / 2, 1);
  for (std::size_t run = 0; run < runs; ++run) {
    const std::size_t from = count * run / runs;
    const std::size_t to = count * (run + 1) / runs;
    std::size_t lowest = from;
    std::size_t highest = from;
    double low = NoValue;
    double high = NoValue;
    for (const auto* column : columns) {
      for (std::size_t i = from; i < std::min(to, column->size()); ++i) {
        const double v = (*column)[i];
        if (std::isnan(v)) continue;
        if (!(v >= low)) low = v, lowest = i;
        if (!(v <= high)) high = v, highest = i;
      }
    }
    kept.push_back(std::min(lowest, highest));
    if (lowest != highest) kept.push_back(std::max(lowest, highest));
  }
  return kept;
}

ChartSlots slotsOf(const ChartAxis& axis, const ChartCategories& categories, std::size_t count,
                   bool from1904) {
  ChartSlots slots;
  const auto byCategory = [&] {
    slots.categoryOf.resize(std::max(count, categories.size()));
    std::iota(slots.categoryOf.begin(), slots.categoryOf.end(), std::size_t{0});
    return slots;
  };
  if (axis.kind != ChartAxis::Kind::Date || !categories.isNumeric()) return byCategory();
  const double shift = from1904 ? 1462 : 0;
  std::vector<double> dates;
  for (const double number : categories.numbers) {
    // 1900 to 9999: other numbers are no dates.
    if (number + shift >= 1 && number + shift < 2958466) dates.push_back(number + shift);
  }
  if (dates.empty()) return byCategory();
  const Unit unit = axis.baseUnit.value_or(automaticUnit(dates));
  const auto [least, greatest] = std::minmax_element(dates.begin(), dates.end());
  const auto limit = [&](const std::optional<double>& stated, double otherwise) {
    const double serial = stated ? *stated + shift : otherwise;
    return slotNumber(std::clamp(serial, 1.0, 2958465.0), unit);
  };
  const double first = limit(axis.min, *least);
  const double last = limit(axis.max, *greatest);
  if (last < first || last - first >= MostSlots) return byCategory();

  const auto slotCount = static_cast<std::size_t>(last - first) + 1;
  slots.categoryOf.assign(slotCount, ChartSlots::NoCategory);
  for (std::size_t i = 0; i < categories.numbers.size(); ++i) {
    const double serial = categories.numbers[i] + shift;
    if (!(serial >= 1 && serial < 2958466)) continue;
    const double slot = slotNumber(serial, unit) - first;
    if (slot >= 0 && slot < static_cast<double>(slotCount))
      slots.categoryOf[static_cast<std::size_t>(slot)] = i;
  }
  for (std::size_t i = 0; i < slotCount; ++i) {
    slots.dates.push_back(serialOf(first + static_cast<double>(i), unit) - shift);
  }
  if (axis.major && *axis.major >= 1) {
    static constexpr double days[] = {1, 30.4375, 365.25};
    const double length = days[static_cast<int>(axis.majorUnit)] / days[static_cast<int>(unit)];
    slots.step = static_cast<int>(std::clamp(std::round(*axis.major * length), 1.0, MostSlots));
  }
  return slots;
}

}  // namespace render
