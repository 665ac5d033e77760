#pragma once

// Lengths: files state English Metric Units and hundredths of points, pages are
// laid out in CSS pixels (96 to the inch).

namespace render {

inline constexpr double EmuPerPx = 9525.0;
inline constexpr double PxPerPoint = 96.0 / 72.0;

constexpr double pxFromEmu(double emu) { return emu / EmuPerPx; }

struct Point {
  double x = 0;
  double y = 0;
};

struct Rect {
  double x = 0;
  double y = 0;
  double w = 0;
  double h = 0;
};

}  // namespace render
