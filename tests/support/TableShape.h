#pragma once

#include <string>

namespace support {

/// XML of a frame with a table of so many columns; `rows` are its a:tr, the first one a header,
/// `nvPr` stands in its p:nvPr.
inline std::string tableShape(int id, const std::string& name, int columns, const std::string& rows,
                              const std::string& nvPr = {}) {
  std::string grid;
  for (int i = 0; i < columns; ++i) grid += "<a:gridCol w=\"1200000\"/>";
  return "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvGraphicFramePr/><p:nvPr>" + nvPr +
         "</p:nvPr></p:nvGraphicFramePr><p:xfrm><a:off x=\"0\" y=\"0\"/>"
         "<a:ext cx=\"3600000\" cy=\"1112520\"/></p:xfrm><a:graphic>"
         "<a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/table\"><a:tbl>"
         "<a:tblPr firstRow=\"1\" bandRow=\"1\"/><a:tblGrid>" +
         grid + "</a:tblGrid>" + rows + "</a:tbl></a:graphicData></a:graphic></p:graphicFrame>";
}

}  // namespace support
