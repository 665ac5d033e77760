#include "render/chart/ChartTrend.h"

#include <algorithm>
#include <cmath>

// Trend lines: least squares by Gaussian elimination, and moving averages.

namespace render {

namespace {

using Points = std::vector<std::pair<double, double>>;

/// Coefficients of the polynomial of least squares, lowest first; empty when the
/// points do not determine it. x is to be scaled to about one.
std::vector<double> fit(const Points& points, std::size_t degree, std::optional<double> intercept) {
  const std::size_t size = degree + 1;
  std::vector<std::vector<double>> rows(size, std::vector<double>(size + 1, 0.0));
  for (const auto& [x, y] : points) {
    std::vector<double> powers(size, 1.0);
    for (std::size_t i = 1; i < size; ++i) powers[i] = powers[i - 1] * x;
    for (std::size_t i = 0; i < size; ++i) {
      for (std::size_t k = 0; k < size; ++k) rows[i][k] += powers[i] * powers[k];
      rows[i][size] += powers[i] * y;
    }
  }
  if (intercept) {
    rows[0].assign(size + 1, 0.0);
    rows[0][0] = 1;
    rows[0][size] = *intercept;
  }
  for (std::size_t i = 0; i < size; ++i) {
    std::size_t pivot = i;
    for (std::size_t k = i + 1; k < size; ++k) {
      if (std::abs(rows[k][i]) > std::abs(rows[pivot][i])) pivot = k;
    }
    if (std::abs(rows[pivot][i]) < 1e-12) return {};
    std::swap(rows[i], rows[pivot]);
    for (std::size_t k = 0; k < size; ++k) {
      if (k == i) continue;
      const double factor = rows[k][i] / rows[i][i];
      for (std::size_t column = i; column <= size; ++column) rows[k][column] -= factor * rows[i][column];
    }
  }
  std::vector<double> coefficients(size);
  for (std::size_t i = 0; i < size; ++i) coefficients[i] = rows[i][size] / rows[i][i];
  return coefficients;
}

Points movingAverage(const Points& points, std::size_t period) {
  Points averages;
  double sum = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    sum += points[i].second;
    if (i >= period) sum -= points[i - period].second;
    if (i + 1 >= period) averages.emplace_back(points[i].first, sum / static_cast<double>(period));
  }
  return averages;
}

}  // namespace

Points trendPoints(const ChartTrend& trend, const std::vector<double>& x, const std::vector<double>& y) {
  using Kind = ChartTrend::Kind;
  const bool logX = trend.kind == Kind::Logarithmic || trend.kind == Kind::Power;
  const bool logY = trend.kind == Kind::Exponential || trend.kind == Kind::Power;
  Points points;
  for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
    if (std::isnan(x[i]) || std::isnan(y[i])) continue;
    if ((logX && x[i] <= 0) || (logY && y[i] <= 0)) return {};
    points.emplace_back(x[i], y[i]);
  }
  std::sort(points.begin(), points.end());
  if (points.size() < 2) return {};
  if (trend.kind == Kind::MovingAverage) return movingAverage(points, static_cast<std::size_t>(trend.order));

  const double from = points.front().first - trend.backward;
  const double to = points.back().first + trend.forward;
  if (!(to > from) || (logX && from <= 0)) return {};
  const double scale = logX ? 1 : std::max({std::abs(from), std::abs(to), 1e-300});
  const auto place = [&](double v) { return logX ? std::log(v) : v / scale; };
  for (auto& [px, py] : points) {
    px = place(px);
    if (logY) py = std::log(py);
  }
  const std::size_t degree = trend.kind == Kind::Polynomial
                                 ? std::clamp<std::size_t>(static_cast<std::size_t>(trend.order), 2, 6)
                                 : 1;
  auto intercept = trend.intercept;
  if (intercept && logY) intercept = *intercept > 0 ? std::optional(std::log(*intercept)) : std::nullopt;
  const auto coefficients = fit(points, degree, intercept);
  if (coefficients.empty()) return {};
  const bool isStraight = trend.kind == Kind::Linear;
  const int parts = isStraight ? 1 : 40;
  Points line;
  for (int i = 0; i <= parts; ++i) {
    const double at = from + (to - from) * i / parts;
    double value = 0;
    for (auto c = coefficients.rbegin(); c != coefficients.rend(); ++c) value = value * place(at) + *c;
    line.emplace_back(at, logY ? std::exp(value) : value);
  }
  return line;
}

}  // namespace render
