#include "HostileDeck.h"

#include <array>

#include "support/DeckBuilder.h"

namespace {

using namespace support;

constexpr std::array<const char*, 12> Parts{"ppt/slides/slide1.xml",
                                            "ppt/slideLayouts/slideLayout1.xml",
                                            "ppt/slideMasters/slideMaster1.xml",
                                            "ppt/theme/theme1.xml",
                                            "ppt/presentation.xml",
                                            "ppt/charts/chart1.xml",
                                            "ppt/tableStyles.xml",
                                            "ppt/diagrams/drawing1.xml",
                                            "ppt/drawings/vmlDrawing1.vml",
                                            "ppt/media/image1.png",
                                            "ppt/theme/themeOverride1.xml",
                                            "ppt/slides/_rels/slide1.xml.rels"};

const std::string Namespaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";
const std::string Area = "<a:off x=\"952500\" y=\"952500\"/><a:ext cx=\"4762500\" cy=\"1905000\"/>";

std::string nonVisual(const std::string& kind, int id, const std::string& nvPr = {}) {
  return "<p:nv" + kind + "Pr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"N\"/><p:cNv" + kind +
         "Pr/><p:nvPr>" + nvPr + "</p:nvPr></p:nv" + kind + "Pr>";
}

std::string placeholder(int id, const std::string& ph, const std::string& properties) {
  return "<p:sp>" + nonVisual("Sp", id, ph) + "<p:spPr>" + properties +
         "</p:spPr><p:style><a:lnRef idx=\"1\"><a:schemeClr val=\"accent1\"/></a:lnRef><a:fillRef idx=\"2\">"
         "<a:schemeClr val=\"accent2\"/></a:fillRef><a:effectRef idx=\"2\"><a:schemeClr "
         "val=\"accent3\"/></a:effectRef>"
         "<a:fontRef idx=\"minor\"/></p:style><p:txBody><a:bodyPr><a:normAutofit/></a:bodyPr><a:p><a:pPr "
         "lvl=\"1\"/>"
         "<a:r><a:t>Some words of\ttext, \xE6\xBC\xA2\xE5\xAD\x97</a:t></a:r><a:br/><a:fld "
         "type=\"datetime1\"><a:t>x"
         "</a:t></a:fld></a:p><a:p><a:r><a:t>more</a:t></a:r></a:p></p:txBody></p:sp>";
}

std::string frame(int id, const std::string& data) {
  return "<p:graphicFrame>" + nonVisual("GraphicFrame", id) + "<p:xfrm>" + Area +
         "</p:xfrm><a:graphic><a:graphicData>" + data + "</a:graphicData></a:graphic></p:graphicFrame>";
}

/// Names of relationships follow the order in which relate() was called: rId2 and on.
std::string shapes() {
  const std::string title = "<p:ph type=\"title\"/>";
  const std::string body = "<p:ph type=\"body\" idx=\"1\"/>";
  const std::string cell = "<a:tc><a:txBody><a:p><a:r><a:t>cell</a:t></a:r></a:p></a:txBody></a:tc>";
  return placeholder(2, title, "") + placeholder(3, body, "") + "<p:pic>" + nonVisual("Pic", 4) +
         "<p:blipFill><a:blip r:embed=\"rId4\"/></p:blipFill><p:spPr><a:xfrm>" + Area +
         "</a:xfrm></p:spPr></p:pic><p:grpSp>" + nonVisual("GrpSp", 5) + "<p:grpSpPr><a:xfrm>" + Area +
         "</a:xfrm></p:grpSpPr>" + placeholder(10, body, "") + "</p:grpSp>" +
         frame(6,
               "<a:tbl><a:tblPr firstRow=\"1\" "
               "bandRow=\"1\"><a:tableStyleId>{1}</a:tableStyleId></a:tblPr><a:tblGrid>"
               "<a:gridCol w=\"952500\"/><a:gridCol w=\"952500\"/></a:tblGrid><a:tr h=\"95250\">" +
                   cell + cell + "</a:tr><a:tr h=\"95250\">" + cell + cell + "</a:tr></a:tbl>") +
         frame(
             7,
             "<c:chart xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" r:id=\"rId2\"/>") +
         frame(8,
               "<d:relIds xmlns:d=\"http://schemas.openxmlformats.org/drawingml/2006/diagram\" "
               "r:dm=\"rIdNone\"/>") +
         frame(9, "<p:oleObj spid=\"_x0000_s1026\"/>");
}

/// What a layout and a master have: a title and a body, and something behind.
std::string tree(const std::string& element, const std::string& behind) {
  return "<p:" + element + Namespaces +
         "><p:cSld><p:bg><p:bgRef idx=\"1001\"><a:schemeClr val=\"bg1\"/></p:bgRef></p:bg>" + "<p:spTree>" +
         placeholder(2, "<p:ph type=\"title\"/>",
                     "<a:xfrm>" + Area + "</a:xfrm><a:prstGeom prst=\"roundRect\"/><a:noFill/>") +
         placeholder(3, "<p:ph type=\"body\" idx=\"1\"/>", "<a:xfrm>" + Area + "</a:xfrm>") +
         textShape(4, "Behind", "behind") + "</p:spTree></p:cSld>" + behind + "</p:" + element + ">";
}

}  // namespace

std::unique_ptr<opc::Package> hostileDeck(char which, const std::string& content) {
  const auto part = static_cast<std::size_t>(which - 'a');
  if (part >= Parts.size()) return nullptr;
  DeckBuilder deck;
  deck.addSlide(shapes());
  deck.relate(1, "chart", "../charts/chart1.xml");
  deck.relate(1, "diagramDrawing", "../diagrams/drawing1.xml");
  deck.relate(1, "image", "../media/image1.png");
  deck.relate(1, "vmlDrawing", "../drawings/vmlDrawing1.vml");
  deck.relate(1, "themeOverride", "../theme/themeOverride1.xml");
  deck.part("ppt/slideLayouts/slideLayout1.xml", tree("sldLayout", ""));
  deck.part("ppt/slideMasters/slideMaster1.xml",
            tree("sldMaster",
                 "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\"/><p:txStyles><p:bodyStyle>"
                 "<a:lvl2pPr><a:buChar char=\"-\"/></a:lvl2pPr></p:bodyStyle></p:txStyles>"));
  const std::string relationship = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
  deck.part(
      "ppt/_rels/presentation.xml.rels",
      "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
      "Id=\"rId101\" "
      "Type=\"" +
          relationship + "slide\" Target=\"slides/slide1.xml\"/><Relationship Id=\"rId1\" Type=\"" +
          relationship + "tableStyles\" Target=\"tableStyles.xml\"/></Relationships>");
  deck.part("ppt/media/image1.png", "GIF89a\1\1\1\1");
  deck.part(Parts[part], content);
  auto entries = deck.entries();
  for (auto& entry : entries) entry.deflated = false;
  return opc::Package::fromBytes(zipOf(entries), "fuzzed");
}
