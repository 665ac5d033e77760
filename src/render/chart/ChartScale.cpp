#include "render/chart/ChartScale.h"

#include <algorithm>
#include <cmath>

// Limits and steps of an axis of values, as the program chooses them that makes decks.

namespace render {

namespace {

constexpr int MostTicks = 300;
/// Lets sums of steps that miss a limit by rounding count as on it.
constexpr double Slack = 1e-9;

/// The smallest of 1, 2, 5 times a power of ten that is not below `least`.
double niceStep(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1 - Slack)) return factor * power;
  }
  return 10 * power;
}

/// Without the noise of adding up: fifteen digits of what matters at this step.
double tidy(double value, double step) {
  const double rounded = std::round(value / step * 1e6) / 1e6 * step;
  const double power = std::pow(10, 12 - std::ceil(std::log10(std::max(std::abs(value), step))));
  return std::isfinite(power) && power > 0 ? std::round(rounded * power) / power : rounded;
}

double floorTo(double value, double step) { return tidy(std::floor(value / step + Slack) * step, step); }
double ceilTo(double value, double step) { return tidy(std::ceil(value / step - Slack) * step, step); }

std::vector<double> steps(double from, double to, double step) {
  std::vector<double> ticks;
  const double count = std::floor((to - from) / step + Slack);
  if (!(count >= 0) || count > MostTicks) return ticks;
  for (int i = 0; i <= static_cast<int>(count); ++i) ticks.push_back(tidy(from + i * step, step));
  return ticks;
}

ChartScale logarithmic(const ChartScaleWish& wish) {
  ChartScale scale;
  const double base = *wish.logBase;
  scale.logBase = base;
  const auto exponent = [&](double value) { return std::log(value) / std::log(base); };
  const double low = wish.low > 0 ? wish.low : 1;
  const double high = std::max(wish.high, low);
  const bool statesMin = wish.min && *wish.min > 0;
  scale.min = statesMin ? *wish.min : std::min(1.0, std::pow(base, std::floor(exponent(low) + Slack)));
  const bool statesMax = wish.max && *wish.max > scale.min;
  scale.max = statesMax ? *wish.max : std::pow(base, std::ceil(exponent(high) - Slack));
  if (scale.max <= scale.min) scale.max = scale.min * base;
  scale.major = scale.minor = base;
  return scale;
}

}  // namespace

std::vector<double> ChartScale::ticks() const {
  if (!logBase) return steps(min, max, major);
  std::vector<double> ticks;
  for (double v = min; v <= max * (1 + Slack) && ticks.size() < MostTicks; v *= *logBase) ticks.push_back(v);
  return ticks;
}

std::vector<double> ChartScale::minorTicks() const {
  if (!logBase) return steps(min, max, minor);
  std::vector<double> ticks;
  for (const double v : this->ticks()) {
    for (int i = 2; i < std::min(*logBase, 10.0) && v * i <= max; ++i) ticks.push_back(v * i);
  }
  return ticks;
}

ChartScale chooseScale(const ChartScaleWish& wish) {
  if (wish.logBase) return logarithmic(wish);
  double low = std::min(wish.low, wish.high);
  double high = std::max(wish.low, wish.high);
  // Nothing but zeros is shown as shares are.
  const bool isBare = low == 0 && high == 0;
  if (isBare) high = 1;
  if (wish.min) low = *wish.min;
  if (wish.max) high = *wish.max;
  if (wish.min && !wish.max && high <= low) high = low + std::max(1.0, std::abs(low));
  if (wish.max && !wish.min && low >= high) low = high - std::max(1.0, std::abs(high));
  if (wish.min && wish.max && low >= high) {
    ChartScaleWish other = wish;
    other.min.reset();
    other.max.reset();
    return chooseScale(other);
  }

  // Data that vary little against their size are shown without zero.
  const bool spreads = (high - low) * 6 > std::max(std::abs(high), std::abs(low)) || high == low;
  double from = low;
  double to = high;
  if (!wish.min) from = low >= 0 ? (spreads ? 0 : low - (high - low) / 2) : low;
  if (!wish.max) to = high <= 0 ? (spreads ? 0 : high + (high - low) / 2) : high;
  const double range = to - from;
  double paddedFrom = from;
  double paddedTo = to;
  if (!wish.max && high > 0 && !((wish.isPercent || isBare) && high <= 1)) paddedTo = to + range / 20;
  if (!wish.min && low < 0 && !(wish.isPercent && low >= -1)) paddedFrom = from - range / 20;

  ChartScale scale;
  const int most = std::clamp(wish.mostSteps, 1, 10);
  double step = niceStep((paddedTo - paddedFrom) / most);
  // Rounding both ends outwards may take one step too many.
  for (int i = 0; i < 3; ++i) {
    const double begin = wish.min ? paddedFrom : floorTo(paddedFrom, step);
    const double end = wish.max ? paddedTo : ceilTo(paddedTo, step);
    if ((end - begin) / step <= most + Slack) break;
    step = niceStep(step * 1.5);
  }
  if (wish.major && *wish.major > 0 && range / *wish.major <= MostTicks) step = *wish.major;
  scale.major = step;
  scale.min = wish.min ? *wish.min : floorTo(paddedFrom, step);
  scale.max = wish.max ? *wish.max : ceilTo(paddedTo, step);
  const bool statesMinor = wish.minor && *wish.minor > 0 && range / *wish.minor <= MostTicks;
  scale.minor = statesMinor ? *wish.minor : step / 5;
  return scale;
}

}  // namespace render
