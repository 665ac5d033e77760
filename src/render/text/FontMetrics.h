#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "render/geometry/Units.h"

namespace render {

/// Extent of the box that a browser centres in a line, in multiples of the size.
struct FontMetrics {
  double ascent = 0.905;
  double descent = 0.212;
};

/// A typeface as pages name it: itself, fonts of the same widths, a generic one.
struct FontStack {
  std::string typeface;
  /// Of the first font of the stack that this machine has: the typeface itself when it is
  /// installed. Empty without any font.
  std::string family;
  /// The value of font-family.
  std::string css;
  /// Of the first family of the stack that this machine has.
  FontMetrics metrics;
};

/// The stack of a typeface; looked up once per name and process.
const FontStack& fontStack(std::string_view typeface);

/// The typeface of a run as one face of it.
struct FaceName {
  std::string_view typeface;
  bool bold = false;
  bool italic = false;
};

/// How wide text (UTF-8) runs in a face of this machine, in multiples of the size, without kerning.
/// Characters that the face lacks count as a fallback font would have them.
double textWidth(const FaceName& face, std::string_view text);

/// The outlines of text as closed polygons, in multiples of the size: from its start to the right, from the
/// baseline down. Sides are short enough to be bent. Nothing for characters that the face lacks.
std::vector<std::vector<Point>> textOutline(const FaceName& face, std::string_view text);

}  // namespace render
