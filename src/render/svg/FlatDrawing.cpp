#include "render/svg/FlatDrawing.h"

#include <algorithm>
#include <cmath>

#include "basic/Base64.h"
#include "render/svg/HtmlOut.h"

namespace render {

DrawingSize sizeInDrawing(double width, double height) {
  if (!(width > 0) || !(height > 0)) width = height = 1;
  const double scale = DrawingPage / std::max(width, height);
  const auto points = [&](double side) { return std::max(1, static_cast<int>(std::lround(side * scale))); };
  return {points(width), points(height)};
}

std::string flatDrawing(const std::vector<DrawnPicture>& pictures) {
  static constexpr std::string_view oasis = "urn:oasis:names:tc:opendocument:xmlns:";
  HtmlOut out;
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document office:version=\"1.3\""
      << " office:mimetype=\"application/vnd.oasis.opendocument.graphics\"";
  static constexpr std::pair<std::string_view, std::string_view> spaces[] = {{"office", "office:1.0"},
                                                                             {"style", "style:1.0"},
                                                                             {"draw", "drawing:1.0"},
                                                                             {"fo", "xsl-fo-compatible:1.0"},
                                                                             {"svg", "svg-compatible:1.0"}};
  for (const auto& [prefix, space] : spaces) out << " xmlns:" << prefix << "=\"" << oasis << space << '"';
  out << "><office:styles/><office:automatic-styles><style:page-layout style:name=\"L\">"
      << "<style:page-layout-properties fo:margin-top=\"0pt\" fo:margin-bottom=\"0pt\" fo:margin-left=\"0pt\""
      << " fo:margin-right=\"0pt\" style:print-orientation=\"landscape\" fo:page-width=\"" << DrawingPage
      << "pt\" fo:page-height=\"" << DrawingPage << "pt\"/></style:page-layout></office:automatic-styles>"
      << "<office:master-styles><style:master-page style:name=\"M\" style:page-layout-name=\"L\"/>"
      << "</office:master-styles><office:body><office:drawing>";
  for (const auto& picture : pictures) {
    const auto size = sizeInDrawing(picture.width, picture.height);
    out << "<draw:page draw:master-page-name=\"M\"><draw:frame svg:x=\"0pt\" svg:y=\"0pt\" svg:width=\""
        << size.width << "pt\" svg:height=\"" << size.height << "pt\"><draw:image><office:binary-data>"
        << basic::toBase64(picture.bytes) << "</office:binary-data></draw:image></draw:frame></draw:page>";
  }
  out << "</office:drawing></office:body></office:document>";
  return out.take();
}

std::string cutOut(std::string svg, DrawingSize size, double width, double height) {
  const auto attributes = svg.find(" width=\"");
  const auto end = svg.find('>', attributes);
  if (attributes == std::string::npos || end == std::string::npos) return {};
  // What was drawn first is the page itself, a white area.
  const auto surface = svg.find("<g id=\"surface1\">", end);
  if (surface == std::string::npos) return {};
  const auto paper = svg.find("<path ", surface);
  const auto paperEnd = svg.find("/>", paper);
  if (paperEnd != std::string::npos &&
      std::string_view(svg).substr(paper, paperEnd - paper).find("fill:rgb(100%,100%,100%)") !=
          std::string_view::npos) {
    svg.erase(paper, paperEnd + 2 - paper);
  }
  HtmlOut head;
  head << " width=\"" << std::max(1.0, width) << "\" height=\"" << std::max(1.0, height)
       << "\" preserveAspectRatio=\"none\" viewBox=\"0 0 " << size.width << ' ' << size.height << '"';
  svg.replace(attributes, end - attributes, head.take());
  return svg;
}

}  // namespace render
