#pragma once

#include <string>
#include <vector>

#include "support/DeckBuilder.h"

// Decks with a chart, for tests and benchmarks.

namespace render::test {

inline std::string chartPoints(const std::vector<std::string>& values) {
  std::string xml = "<c:ptCount val=\"" + std::to_string(values.size()) + "\"/>";
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i].empty())
      xml += "<c:pt idx=\"" + std::to_string(i) + "\"><c:v>" + values[i] + "</c:v></c:pt>";
  }
  return xml;
}

/// A c:cat or c:tx with names.
inline std::string chartTexts(const std::string& element, const std::vector<std::string>& texts) {
  return "<c:" + element + "><c:strRef><c:strCache>" + chartPoints(texts) +
         "</c:strCache></c:strRef></c:" + element + ">";
}

/// A c:val, c:xVal ...; an empty value is a gap.
inline std::string chartNumbers(const std::string& element, const std::vector<std::string>& values,
                                const std::string& format = "General") {
  return "<c:" + element + "><c:numRef><c:numCache><c:formatCode>" + format + "</c:formatCode>" +
         chartPoints(values) + "</c:numCache></c:numRef></c:" + element + ">";
}

/// A c:ser whose number is `index`; `data` are its categories and values, `extra`
/// stands before them.
inline std::string chartSeries(int index, const std::string& name, const std::string& data,
                               const std::string& extra = {}) {
  const auto number = std::to_string(index);
  return "<c:ser><c:idx val=\"" + number + "\"/><c:order val=\"" + number + "\"/>" +
         chartTexts("tx", {name}) + extra + data + "</c:ser>";
}

inline const std::string ChartAxisIds = "<c:axId val=\"1\"/><c:axId val=\"2\"/>";
/// A horizontal axis of categories and a vertical one of values; what is stated
/// within them may be added.
inline std::string chartAxes(const std::string& category = {}, const std::string& value = {}) {
  return "<c:catAx><c:axId val=\"1\"/><c:axPos val=\"b\"/><c:crossAx val=\"2\"/>" + category +
         "</c:catAx><c:valAx><c:axId val=\"2\"/><c:axPos val=\"l\"/><c:crossAx val=\"1\"/>" + value +
         "</c:valAx>";
}

/// A chart part with this in its plot area, and behind it.
inline std::string chartPart(const std::string& plotArea, const std::string& behind = {}) {
  return "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
         "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
         "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><c:chart>"
         "<c:plotArea>" +
         plotArea + "</c:plotArea>" + behind + "</c:chart></c:chartSpace>";
}

/// Shape 2 of slide 1 is the chart, shape 3 a text.
inline std::unique_ptr<opc::Package> chartDeck(const std::string& part) {
  support::DeckBuilder builder = support::DeckBuilder::of();
  builder.part("ppt/charts/chart1.xml", part,
               "application/vnd.openxmlformats-officedocument.drawingml.chart+xml");
  const auto id = builder.relate(1, "chart", "../charts/chart1.xml");
  builder.shapes(1,
                 "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"2\" name=\"Chart\"/></p:nvGraphicFramePr>"
                 "<p:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"5715000\" cy=\"3810000\"/></p:xfrm><a:graphic>"
                 "<a:graphicData><c:chart "
                 "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" r:id=\"" +
                     id + "\"/></a:graphicData></a:graphic></p:graphicFrame>" +
                     support::textShape(3, "Text", "still here"));
  return builder.package();
}

}  // namespace render::test
