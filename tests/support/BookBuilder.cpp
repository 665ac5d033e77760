#include "support/BookBuilder.h"

#include <algorithm>

namespace support {
namespace {

constexpr const char* Main = R"( xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main")";

std::string relationship(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id +
         "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/" + kind +
         "\" Target=\"" + target + "\"/>";
}

std::string element(const std::string& name, const std::string& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

}  // namespace

std::string BookBuilder::bytes() const {
  std::vector<ZipEntry> entries{
      {"_rels/.rels",
       "<Relationships>" + relationship("rId1", "officeDocument", "xl/workbook.xml") + "</Relationships>"},
      {"xl/_rels/workbook.xml.rels",
       "<Relationships>" + relationship("rId1", "worksheet", "worksheets/sheet1.xml") +
           relationship("rId2", "styles", "/xl/styles.xml") +
           relationship("rId3", "sharedStrings", "sharedStrings.xml") + "</Relationships>"},
      {"xl/workbook.xml", std::string("<workbook") + Main + "><workbookPr date1904=\"" +
                              (from1904 ? "1" : "0") +
                              "\"/><sheets><sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/></sheets>" +
                              element("definedNames", names) + "</workbook>"},
      {"xl/worksheets/sheet1.xml",
       std::string("<worksheet") + Main + ">" + element("sheetData", rows) + "</worksheet>"},
      {"xl/styles.xml", std::string("<styleSheet") + Main + ">" + element("numFmts", formats) +
                            element("cellXfs", styles) + "</styleSheet>"},
      {"xl/sharedStrings.xml", std::string("<sst") + Main + ">" + strings + "</sst>"}};
  for (const ZipEntry& part : parts) {
    const auto same =
        std::find_if(entries.begin(), entries.end(), [&](const auto& e) { return e.name == part.name; });
    if (same == entries.end()) {
      entries.push_back(part);
    } else {
      *same = part;
    }
  }
  return zipOf(entries);
}

}  // namespace support
