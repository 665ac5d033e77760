#include "render/chart/ChartScale.h"

#include <gtest/gtest.h>

#include <cmath>

#include "render/chart/ChartSlots.h"
#include "render/chart/ChartTrend.h"

namespace render {
namespace {

TEST(ChartScale, IsTheOneThatPowerPointChooses) {
  const struct {
    ChartScaleWish wish;
    double min, max, major;
  } cases[] = {
      {{.low = 1.8, .high = 5}, 0, 6, 1},
      {{.low = 1, .high = 4.3}, 0, 5, 0.5},
      {{.low = 1, .high = 9}, 0, 10, 1},
      {{.low = 1, .high = 10}, 0, 12, 2},
      {{.low = 20, .high = 100}, 0, 120, 20},
      {{.low = -4.5, .high = 5}, -6, 6, 2},
      {{.low = -8, .high = -2}, -9, 0, 1},
      // Close together, far from zero.
      {{.low = 95, .high = 100}, 92, 101, 1},
      {{.low = 0, .high = 1, .isPercent = true}, 0, 1, 0.1},
      {{.low = -1, .high = 1, .isPercent = true}, -1, 1, 0.2},
      {{.low = 1, .high = 5, .mostSteps = 3}, 0, 6, 2},
      {{.low = 0, .high = 0}, 0, 1, 0.1},
      {{.low = 7, .high = 7}, 0, 8, 1},
      {{.min = 2, .low = 3, .high = 9}, 2, 10, 1},
      {{.max = 50, .low = 3, .high = 9}, 0, 50, 5},
      {{.min = 0, .max = 1, .major = 0.25}, 0, 1, 0.25},
      {{.major = 3, .low = 1, .high = 10}, 0, 12, 3},
      // Nonsense is as if it were not stated.
      {{.min = 9, .max = 2, .low = 1, .high = 5}, 0, 6, 1},
      {{.major = -1, .low = 1, .high = 5}, 0, 6, 1},
      {{.major = 1e-9, .low = 1, .high = 5}, 0, 6, 1},
      {{.logBase = 10, .low = 3, .high = 4000}, 1, 10000, 10},
      {{.logBase = 10, .low = 0.02, .high = 5}, 0.01, 10, 10},
      {{.logBase = 10, .low = -5, .high = 0}, 1, 10, 10},
      {{.low = 1e-7, .high = 3e-7}, 0, 3.5e-7, 5e-8},
      {{.low = -1e200, .high = 1e200}, -1.5e200, 1.5e200, 5e199},
  };
  for (const auto& [wish, min, max, major] : cases) {
    const auto scale = chooseScale(wish);
    const auto what = std::to_string(wish.low) + " to " + std::to_string(wish.high);
    EXPECT_NEAR(scale.min, min, std::abs(min) * 1e-9) << what;
    EXPECT_NEAR(scale.max, max, std::abs(max) * 1e-9) << what;
    EXPECT_NEAR(scale.major, major, std::abs(major) * 1e-9) << what;
  }
}

TEST(ChartScale, TicksAreTheNumbersThatPeopleWrite) {
  const auto scale = chooseScale({.low = 0, .high = 0.65});
  EXPECT_EQ(scale.ticks(), (std::vector<double>{0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}));
  EXPECT_EQ(chooseScale({.min = 5, .max = 26, .major = 10}).ticks(), (std::vector<double>{5, 15, 25}));
  EXPECT_EQ(chooseScale({.logBase = 10, .low = 1, .high = 500}).ticks(),
            (std::vector<double>{1, 10, 100, 1000}));
}

TEST(ChartSlots, DatesStandAsFarApartAsTheyAre) {
  ChartAxis axis;
  axis.kind = ChartAxis::Kind::Date;
  ChartCategories days;
  days.numbers = {45293, 45292, 45296};
  auto slots = slotsOf(axis, days, 3, false);
  const auto none = ChartSlots::NoCategory;
  EXPECT_EQ(slots.categoryOf, (std::vector<std::size_t>{1, 0, none, none, 2}));
  EXPECT_EQ(slots.dates.front(), 45292);

  ChartCategories months;  // the firsts of November 2023, January and February 2024
  months.numbers = {45231, 45292, 45323};
  slots = slotsOf(axis, months, 3, false);
  EXPECT_EQ(slots.categoryOf, (std::vector<std::size_t>{0, none, 1, 2}));
  EXPECT_EQ(slots.dates[1], 45261);
  axis.major = 1;
  axis.majorUnit = ChartAxis::Unit::Years;
  EXPECT_EQ(slotsOf(axis, months, 3, false).step, 12);

  ChartAxis plain;
  plain.kind = ChartAxis::Kind::Date;
  // Dates that would need millions of slots, and numbers that are none, are names.
  for (const auto& numbers : {std::vector<double>{1, 2, 2900000}, {-5, 1e15, NoValue}}) {
    ChartCategories odd;
    odd.numbers = numbers;
    EXPECT_EQ(slotsOf(plain, odd, 3, false).categoryOf.size(), 3U);
  }
}

TEST(ChartSlots, ManyPointsKeepTheirExtremes) {
  std::vector<double> wave(100000);
  for (std::size_t i = 0; i < wave.size(); ++i) wave[i] = std::sin(static_cast<double>(i) / 500);
  wave[54321] = 99;
  wave[77777] = -99;
  wave[3] = NoValue;
  const auto kept = thinned({&wave}, pointsKept(1));
  EXPECT_LE(kept.size(), MostPointsOfSeries);
  EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
  for (const std::size_t extreme : {54321U, 77777U}) {
    EXPECT_TRUE(std::binary_search(kept.begin(), kept.end(), extreme));
  }
  EXPECT_LE(pointsKept(40) * 40, MostPointsOfChart);
}

ChartTrend trendOf(ChartTrend::Kind kind, int order = 2) {
  ChartTrend trend;
  trend.kind = kind;
  trend.order = order;
  return trend;
}

TEST(ChartTrend, FitsWhatItsKindCan) {
  using Kind = ChartTrend::Kind;
  const std::vector<double> x = {1, 2, 3, 4, 5};
  const auto at = [&](const ChartTrend& trend, auto function) {
    std::vector<double> y;
    for (const double v : x) y.push_back(function(v));
    const auto points = trendPoints(trend, x, y);
    EXPECT_FALSE(points.empty());
    for (const auto& [px, py] : points) EXPECT_NEAR(py, function(px), 1e-6) << px;
    return points;
  };
  auto reaching = trendOf(Kind::Linear);
  reaching.forward = 2;
  reaching.backward = 1;
  const auto line = at(reaching, [](double v) { return 3 * v - 7; });
  EXPECT_EQ(line.front().first, 0);
  EXPECT_EQ(line.back().first, 7);
  at(trendOf(Kind::Polynomial, 3), [](double v) { return v * v * v - 2 * v; });
  at(trendOf(Kind::Exponential), [](double v) { return 2 * std::exp(0.5 * v); });
  at(trendOf(Kind::Power), [](double v) { return 3 * std::pow(v, 1.5); });
  at(trendOf(Kind::Logarithmic), [](double v) { return 2 * std::log(v) + 1; });
  const auto average = trendPoints(trendOf(Kind::MovingAverage, 2), x, {1, 3, 5, NoValue, 9});
  EXPECT_EQ(average, (std::vector<std::pair<double, double>>{{2, 2}, {3, 4}, {5, 7}}));
  // What allows none.
  EXPECT_TRUE(trendPoints(trendOf(Kind::Exponential), x, {1, -1, 1, 1, 1}).empty());
  EXPECT_TRUE(trendPoints(trendOf(Kind::Linear), {1}, {1}).empty());
  EXPECT_TRUE(trendPoints(trendOf(Kind::Polynomial, 6), {1, 1, 2}, {1, 2, 3}).empty());
}

}  // namespace
}  // namespace render
