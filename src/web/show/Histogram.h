#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace web {

/// How many observations, in seconds, were at most so large; as Prometheus counts them.
class Histogram {
 public:
  /// From a frame to what people take for broken.
  static constexpr std::array<double, 8> bounds{0.025, 0.05, 0.1, 0.25, 0.5, 1, 2.5, 10};

  void add(double value) {
    for (std::size_t i = 0; i < bounds.size(); ++i) counts_[i] += value <= bounds[i] ? 1 : 0;
    ++count_;
    sum_ += value;
  }
  /// Of observations up to bounds[i].
  [[nodiscard]] std::uint64_t upTo(std::size_t i) const { return counts_[i]; }
  [[nodiscard]] std::uint64_t count() const { return count_; }
  [[nodiscard]] double sum() const { return sum_; }

 private:
  std::array<std::uint64_t, bounds.size()> counts_{};
  std::uint64_t count_ = 0;
  double sum_ = 0;
};

}  // namespace web
