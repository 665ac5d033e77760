#pragma once

#include <string>
#include <string_view>

namespace render {

/// Natural extent of a font's lines in multiples of its size.
struct FontMetrics {
  double ascent = 0.905;
  double descent = 0.212;
  [[nodiscard]] double lineHeight() const { return ascent + descent; }
};

/// A typeface as pages name it: itself, fonts of the same widths, a generic one.
struct FontStack {
  /// The value of font-family.
  std::string css;
  /// Of the first family of the stack that this machine has.
  FontMetrics regular;
  FontMetrics bold;

  [[nodiscard]] const FontMetrics& metrics(bool isBold) const { return isBold ? bold : regular; }
};

/// The stack of a typeface; looked up once per name and process.
const FontStack& fontStack(std::string_view typeface);

}  // namespace render
