#pragma once

#include <string>
#include <string_view>

namespace render {

/// A presentation's single line is 1.2 times the size of its text whatever the
/// font, a fifth of the size below the baseline. Measured: a font's own metrics
/// do not show in the distance of lines.
inline constexpr double SingleLine = 1.2;
inline constexpr double BelowBaseline = 0.2;

/// Extent of the box that a browser centres in a line, in multiples of the size.
struct FontMetrics {
  double ascent = 0.905;
  double descent = 0.212;
};

/// A typeface as pages name it: itself, fonts of the same widths, a generic one.
struct FontStack {
  /// The value of font-family.
  std::string css;
  /// Of the first family of the stack that this machine has.
  FontMetrics metrics;
};

/// The stack of a typeface; looked up once per name and process.
const FontStack& fontStack(std::string_view typeface);

}  // namespace render
