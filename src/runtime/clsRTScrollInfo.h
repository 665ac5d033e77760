#pragma once

#include <cstdint>
#include <string>

namespace LF2000 {

/// One scroll entry of a slide at work: what its shapes share.
struct clsRTScrollInfo {
  /// Rows; below 0 the shapes move towards the first row.
  std::int32_t Step = 0;
  /// Milliseconds between two steps.
  std::int32_t Time = 0;
  /// The connection whose rows the shapes go through, a key of Connections.
  std::string ConnectionKey;
  /// The smallest and the largest row of the shapes.
  double FirstRow = 0;
  double LastRow = 0;
  /// Steps taken since the start of the data.
  std::int64_t Steps = 0;
  /// Milliseconds accumulated towards the next step.
  double Elapsed = 0;

  /// What is added to the shapes' rows.
  [[nodiscard]] double RowOffset() const { return static_cast<double>(Steps) * Step; }
};

}  // namespace LF2000
