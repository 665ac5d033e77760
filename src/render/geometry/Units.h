#pragma once

// Lengths: files state English Metric Units and hundredths of points, pages are
// laid out in CSS pixels (96 to the inch).

namespace render {

inline constexpr double EmuPerPx = 9525.0;
inline constexpr double PxPerPoint = 96.0 / 72.0;

constexpr double pxFromEmu(double emu) { return emu / EmuPerPx; }

/// Browsers place lines and borders on whole pixels of the layout. Text and tables are
/// therefore laid out this many times larger and scaled down by the style sheet.
inline constexpr double Fineness = 8;
constexpr double fine(double px) { return px * Fineness; }

/// px, y running down.
struct Point {
  double x = 0;
  double y = 0;
};

/// px: the upper left corner and the size.
struct Rect {
  double x = 0;
  double y = 0;
  double w = 0;
  double h = 0;
};

}  // namespace render
