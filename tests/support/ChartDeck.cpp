#include "support/ChartDeck.h"

#include <map>
#include <pugixml.hpp>

#include "basic/Strings.h"
#include "support/BookBuilder.h"

namespace support {
namespace {

std::string points(const std::string& list) {
  const std::vector<std::string> values = basic::Split(list, ',');
  std::string xml = "<c:ptCount val=\"" + std::to_string(values.size()) + "\"/>";
  for (std::size_t i = 0; i < values.size(); ++i) {
    xml += "<c:pt idx=\"" + std::to_string(i) + "\"><c:v>" + values[i] + "</c:v></c:pt>";
  }
  return xml;
}

std::map<int, std::string> pointsOf(pugi::xml_node source) {
  std::map<int, std::string> found;
  const pugi::xml_node reference = source.first_child();
  const pugi::xml_node cache = reference.child("c:f") ? reference.last_child() : reference;
  for (pugi::xml_node point : cache.children("c:pt")) {
    found[point.attribute("idx").as_int()] = point.child_value("c:v");
  }
  if (source) found.try_emplace(cache.child("c:ptCount").attribute("val").as_int() - 1, "-");
  return found;
}

}  // namespace

std::string series(int index, const std::string& column, const std::string& name, const std::string& values,
                   const std::string& formatting) {
  const std::string number = std::to_string(index);
  return "<c:ser><c:idx val=\"" + number + "\"/><c:order val=\"" + number +
         "\"/><c:tx><c:strRef><c:f>Sheet1!$" + column + "$1</c:f><c:strCache>" + points(name) +
         "</c:strCache></c:strRef></c:tx>" + formatting +
         "<c:cat><c:strRef><c:f>Sheet1!$A$2:$A$4</c:f><c:strCache>" + points("Jan,Feb,Mar") +
         "</c:strCache></c:strRef></c:cat><c:val><c:numRef><c:f>Sheet1!$" + column + "$2:$" + column +
         "$4</c:f><c:numCache><c:formatCode>0.0</c:formatCode>" + points(values) +
         "</c:numCache></c:numRef></c:val></c:ser>";
}

std::string group(const std::string& kind, const std::string& series, int axes) {
  const std::string first = std::to_string(axes) + "1";
  const std::string second = std::to_string(axes) + "2";
  return "<c:" + kind + ">" + series + "<c:axId val=\"" + first + "\"/><c:axId val=\"" + second +
         "\"/></c:" + kind + ">";
}

std::string ChartDeck::bookBytes() const {
  if (!book.empty()) return book;
  BookBuilder builder;
  const std::string main = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
  const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
  const auto text = [](const std::string& cell, const std::string& value) {
    return "<c r=\"" + cell + "\" t=\"inlineStr\"><is><t>" + value + "</t></is></c>";
  };
  const auto row = [&](int number, const std::string& month, int north) {
    const std::string n = std::to_string(number);
    return "<row r=\"" + n + "\" spans=\"1:3\">" + text("A" + n, month) + "<c r=\"B" + n + "\" s=\"1\"><v>" +
           std::to_string(north) + "</v></c><c r=\"C" + n + "\"><v>" + std::to_string(north + 3) +
           "</v></c></row>";
  };
  const std::string ordinary = "<row r=\"1\">" + text("A1", " ") + text("B1", "North") + text("C1", "South") +
                               text("F1", "note") + "</row>" + row(2, "Jan", 1) + row(3, "Feb", 2) +
                               row(4, "Mar", 3) + "<row r=\"9\">" + text("A9", "below") + "</row>";
  builder.styles = "<xf/><xf/>";
  builder.parts = {
      {"[Content_Types].xml",
       "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
       "Extension=\"xml\" "
       "ContentType=\"application/xml\"/><Default Extension=\"rels\" "
       "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/></Types>"},
      {"xl/workbook.xml",
       "<workbook" + main + " xmlns:r=\"" + office +
           "\"><sheets><sheet name=\"Notes\" sheetId=\"2\" r:id=\"rId9\"/><sheet name=\"Sheet1\" "
           "sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels",
       "<Relationships><Relationship Id=\"rId1\" Type=\"" + office +
           "/worksheet\" Target=\"worksheets/sheet1.xml\"/><Relationship Id=\"rId9\" Type=\"" + office +
           "/worksheet\" Target=\"worksheets/sheet2.xml\"/><Relationship Id=\"rId5\" Type=\"" + office +
           "/calcChain\" Target=\"calcChain.xml\"/></Relationships>"},
      {"xl/calcChain.xml", "<calcChain" + main + "><c r=\"B2\"/></calcChain>"},
      {"xl/worksheets/sheet2.xml", "<worksheet" + main + "><sheetData/></worksheet>"},
      {"xl/worksheets/sheet1.xml",
       "<worksheet" + main + " xmlns:r=\"" + office + "\"><dimension ref=\"A1:F9\"/><sheetData>" +
           (rows.empty() ? ordinary : rows) +
           "</sheetData><tableParts count=\"1\"><tablePart r:id=\"rId1\"/></tableParts></worksheet>"},
      {"xl/worksheets/_rels/sheet1.xml.rels",
       "<Relationships><Relationship Id=\"rId1\" Type=\"" + office +
           "/table\" Target=\"../tables/table1.xml\"/></Relationships>"},
      {"xl/tables/table1.xml",
       table.empty()
           ? "<table" + main +
                 " id=\"1\" name=\"T\" displayName=\"T\" ref=\"A1:C4\"><autoFilter ref=\"A1:C4\"/>"
                 "<tableColumns count=\"3\"><tableColumn id=\"1\" name=\" \"/><tableColumn id=\"2\" "
                 "name=\"North\"/><tableColumn id=\"3\" name=\"South\"/></tableColumns></table>"
           : table}};
  return builder.bytes();
}

DeckBuilder ChartDeck::build() const {
  DeckBuilder deck;
  const int slide = deck.addSlide();
  const std::string schemas = "http://schemas.openxmlformats.org/drawingml/2006/";
  deck.shapes(slide, graphicFrame(7, "Chart", schemas + "chart",
                                  "<x:chart xmlns:x=\"" + schemas + "chart\" r:id=\"" +
                                      deck.relate(slide, "chart", "../charts/chart1.xml") + "\"/>"));
  std::string axes;
  for (const char* id : {"11", "12", "21", "22"}) {
    const std::string element = id[1] == '1' ? "c:catAx" : "c:valAx";
    axes += "<" + element + "><c:axId val=\"" + id + "\"/></" + element + ">";
  }
  deck.part(
      "ppt/charts/chart1.xml",
      "<c:chartSpace xmlns:c=\"" + schemas + "chart\" xmlns:a=\"" + schemas +
          "main\" xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><c:chart>"
          "<c:plotArea>" +
          groups + axes + "</c:plotArea></c:chart>" + externalData + "</c:chartSpace>",
      "application/vnd.openxmlformats-officedocument.drawingml.chart+xml");
  if (!relationship.empty()) {
    deck.part("ppt/charts/_rels/chart1.xml.rels",
              "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
                  relationship + "</Relationships>");
    deck.part("ppt/embeddings/book.xlsx", bookBytes(),
              "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet");
  }
  return deck;
}

std::string seriesIn(const std::string& chartXml) {
  pugi::xml_document document;
  document.load_string(chartXml.c_str(), pugi::parse_full | pugi::parse_ws_pcdata);
  std::string text;
  for (const pugi::xpath_node found : document.select_nodes("//c:ser")) {
    const pugi::xml_node series = found.node();
    const auto either = [&](const char* a, const char* b) {
      return series.child(a) ? series.child(a) : series.child(b);
    };
    const auto categories = pointsOf(either("c:cat", "c:xVal"));
    const auto values = pointsOf(either("c:val", "c:yVal"));
    const auto sizes = pointsOf(series.child("c:bubbleSize"));
    const pugi::xml_node name = series.child("c:tx").first_child();
    text +=
        (text.empty() ? "" : "; ") + pointsOf(series.child("c:tx"))[0] + "@" + name.child_value("c:f") + ":";
    const int last = values.empty() ? -1 : values.rbegin()->first;
    const auto at = [](const std::map<int, std::string>& points, int i) {
      const auto point = points.find(i);
      return point == points.end() ? std::string("-") : point->second;
    };
    for (int i = 0; i <= last; ++i) {
      text += (i == 0 ? " " : ", ") + at(categories, i) + " " + at(values, i);
      if (!sizes.empty()) text += " " + at(sizes, i);
    }
  }
  return text;
}

}  // namespace support
