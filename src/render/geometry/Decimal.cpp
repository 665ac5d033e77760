#include "render/geometry/Decimal.h"

#include <algorithm>
#include <cmath>

namespace render {

void appendDecimal(std::string& out, double value, int decimals) {
  if (!std::isfinite(value)) value = 0;
  long long scale = 1;
  for (int i = 0; i < decimals; ++i) scale *= 10;
  const auto scaled = std::llround(std::clamp(value, -1e9, 1e9) * static_cast<double>(scale));
  const auto magnitude = scaled < 0 ? -scaled : scaled;
  if (scaled < 0) out += '-';
  char digits[24];
  char* end = digits + sizeof digits;
  char* at = end;
  auto whole = magnitude / scale;
  do {
    *--at = static_cast<char>('0' + whole % 10);
    whole /= 10;
  } while (whole != 0);
  out.append(at, end);
  auto fraction = magnitude % scale;
  if (fraction != 0) {
    out += '.';
    for (scale /= 10; fraction != 0; scale /= 10) {
      out += static_cast<char>('0' + fraction / scale);
      fraction %= scale;
    }
  }
}

}  // namespace render
