#pragma once

#include <string>
#include <string_view>
#include <vector>

// The two ends of converting pictures by LibreOffice: the document that shows them
// and the SVG that comes of one of its pages.

namespace render {

struct DrawnPicture {
  std::string_view bytes;
  /// Of any unit; only the proportion counts.
  double width = 0;
  double height = 0;
};

/// The side of the square pages, in points.
inline constexpr int DrawingPage = 720;

/// How large a picture of that proportion stands in the page's upper left corner.
struct DrawingSize {
  int width = 0;  // points
  int height = 0;
};
DrawingSize sizeInDrawing(double width, double height);

/// A drawing with one picture a page, as flat XML (OpenDocument 1.3 part 3, 3.1.2).
std::string flatDrawing(const std::vector<DrawnPicture>& pictures);

/// A page as pdftocairo gives it, cut down to the picture and without the paper
/// behind it. `width` and `height` become the picture's natural size, in CSS px.
/// Empty when it is no such page.
std::string cutOut(std::string svg, DrawingSize size, double width, double height);

}  // namespace render
