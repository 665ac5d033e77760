#pragma once

#include <string>

namespace render {

/// Appends a number in the shortest decimal form with at most `decimals` (0 to 9) places, as CSS, SVG and XML
/// take it: no exponent, no trailing zeros, never "-0". What is not finite counts as 0, and what lies beyond
/// a thousand million as that.
void appendDecimal(std::string& out, double value, int decimals);

}  // namespace render
