#pragma once

#include <string>

namespace render::test {

/// A TrueType font (ISO/IEC 14496-22) of the family "Square", 1000 units to the em, whose letters are all an
/// em wide: A is the square above the baseline, B an arch over it, one quadratic curve as high as half an em.
/// Ascent 800, descent 200.
std::string squareFont();

}  // namespace render::test
