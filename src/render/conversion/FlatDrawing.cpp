#include "render/conversion/FlatDrawing.h"

#include <algorithm>
#include <cmath>

#include "basic/Base64.h"
#include "render/geometry/Decimal.h"

namespace render {

DrawingSize sizeInDrawing(double width, double height) {
  if (!(width > 0) || !(height > 0)) width = height = 1;
  const double scale = DrawingPage / std::max(width, height);
  const auto points = [&](double side) { return std::max(1, static_cast<int>(std::lround(side * scale))); };
  return {points(width), points(height)};
}

std::string flatDrawing(const std::vector<DrawnPicture>& pictures) {
  const std::string side = std::to_string(DrawingPage) + "pt";
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document office:version=\"1.3\""
      " office:mimetype=\"application/vnd.oasis.opendocument.graphics\"";
  static constexpr std::pair<const char*, const char*> spaces[] = {{"office", "office:1.0"},
                                                                   {"style", "style:1.0"},
                                                                   {"draw", "drawing:1.0"},
                                                                   {"fo", "xsl-fo-compatible:1.0"},
                                                                   {"svg", "svg-compatible:1.0"}};
  for (const auto& [prefix, space] : spaces) {
    xml.append(" xmlns:").append(prefix).append("=\"urn:oasis:names:tc:opendocument:xmlns:");
    xml.append(space).append("\"");
  }
  xml +=
      "><office:styles/><office:automatic-styles><style:page-layout style:name=\"L\">"
      "<style:page-layout-properties fo:margin-top=\"0pt\" fo:margin-bottom=\"0pt\" fo:margin-left=\"0pt\""
      " fo:margin-right=\"0pt\" style:print-orientation=\"landscape\" fo:page-width=\"";
  xml.append(side).append("\" fo:page-height=\"").append(side);
  xml +=
      "\"/></style:page-layout></office:automatic-styles>"
      "<office:master-styles><style:master-page style:name=\"M\" style:page-layout-name=\"L\"/>"
      "</office:master-styles><office:body><office:drawing>";
  for (const auto& picture : pictures) {
    const auto size = sizeInDrawing(picture.width, picture.height);
    xml += "<draw:page draw:master-page-name=\"M\"><draw:frame svg:x=\"0pt\" svg:y=\"0pt\" svg:width=\"";
    xml.append(std::to_string(size.width)).append("pt\" svg:height=\"").append(std::to_string(size.height));
    xml += "pt\"><draw:image><office:binary-data>";
    xml.append(basic::toBase64(picture.bytes));
    xml += "</office:binary-data></draw:image></draw:frame></draw:page>";
  }
  return xml += "</office:drawing></office:body></office:document>";
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
  std::string head = " width=\"";
  appendDecimal(head, std::max(1.0, width), 2);
  head += "\" height=\"";
  appendDecimal(head, std::max(1.0, height), 2);
  head += "\" preserveAspectRatio=\"none\" viewBox=\"0 0 ";
  head.append(std::to_string(size.width)).append(" ").append(std::to_string(size.height)).append("\"");
  svg.replace(attributes, end - attributes, head);
  return svg;
}

}  // namespace render
