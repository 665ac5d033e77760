#include "render/svg/PatternPath.h"

#include <algorithm>

namespace render {

void patternPath(HtmlOut& out, const PatternRows& rows) {
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < 8;) {
      const auto isSet = [&](int at) {
        return at < 8 && (static_cast<unsigned>(rows[static_cast<std::size_t>(row)]) >> (7 - at) & 1U) != 0;
      };
      int length = 0;
      while (isSet(column + length)) ++length;
      if (length > 0) out << 'M' << column << ' ' << row << 'h' << length << "v1h-" << length << 'z';
      column += std::max(length, 1);
    }
  }
}

}  // namespace render
