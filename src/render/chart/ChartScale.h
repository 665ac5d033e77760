#pragma once

#include <optional>
#include <vector>

namespace render {

/// What an axis of values runs from and to.
struct ChartScale {
  double min = 0;
  double max = 1;
  double major = 0.2;
  double minor = 0.04;
  std::optional<double> logBase;

  /// Where tick marks stand, from `min` on; at most a few hundred.
  [[nodiscard]] std::vector<double> ticks() const;
  [[nodiscard]] std::vector<double> minorTicks() const;
};

/// What a deck states of a scale, and what it has to hold.
struct ChartScaleWish {
  std::optional<double> min = {};
  std::optional<double> max = {};
  std::optional<double> major = {};
  std::optional<double> minor = {};
  std::optional<double> logBase = {};
  /// Extremes of the data; without any they are 0 and 1.
  double low = 0;
  double high = 1;
  /// The data are shares of one, which end at one.
  bool isPercent = false;
  /// Steps that there is room for.
  int mostSteps = 10;
};

/// The scale as PowerPoint makes it: steps of 1, 2 or 5 times a power of ten, at
/// most ten of them; a twentieth of the range is kept free above the data; zero
/// belongs to the axis unless the data lie within a sixth of it.
ChartScale chooseScale(const ChartScaleWish& wish);

}  // namespace render
