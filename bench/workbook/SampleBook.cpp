#include "SampleBook.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "support/ZipFile.h"

namespace bench {
namespace {

constexpr int Cities = 100;
constexpr const char* Start = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";
constexpr const char* Main = R"( xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main")";
constexpr const char* Office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string relationship(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + Office + "/" + kind + "\" Target=\"" + target + "\"/>";
}

std::string relationships(const std::string& content) {
  return std::string(Start) +
         R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)" + content +
         "</Relationships>";
}

std::string strings(int names) {
  std::string text = std::string(Start) + "<sst" + Main + ">";
  for (int i = 0; i < Cities; ++i) text += "<si><t>City " + std::to_string(i) + "</t></si>";
  for (int i = 0; i < names; ++i) text += "<si><t>Name " + std::to_string(i) + "</t></si>";
  return text + "</sst>";
}

}  // namespace

std::string sampleSheet(int rows, int names) {
  std::mt19937 random(1);
  const auto share = [&] { return static_cast<double>(random()) / 4294967296.0; };
  std::string text = std::string(Start) + "<worksheet" + Main + "><dimension ref=\"A1:J" +
                     std::to_string(rows) + "\"/><sheetData>";
  for (int row = 1; row <= rows; ++row) {
    char line[1024];
    std::snprintf(
        line, sizeof line,
        R"(<row r="%d" spans="1:10"><c r="A%d"><v>%d</v></c><c r="B%d" t="s"><v>%d</v></c>)"
        R"(<c r="C%d" s="1"><v>%.15g</v></c><c r="D%d" s="2"><v>%.15g</v></c><c r="E%d" s="3"><v>%.16g</v></c>)"
        R"(<c r="F%d" t="b"><v>%d</v></c><c r="G%d" t="s"><v>%d</v></c><c r="H%d"><v>%u</v></c>)"
        R"(<c r="I%d" s="1"><v>%.15g</v></c><c r="J%d"><v>%d</v></c></row>)",
        row, row, row, row, Cities + row % names, row, share() * 1e5, row, 45000.0 + row / 10.0, row, share(),
        row, row % 2, row, row % Cities, row, static_cast<unsigned>(random() % 1000000U), row,
        share() * 100.0, row, row % 10);
    text += line;
  }
  return text + "</sheetData></worksheet>";
}

std::string sampleBook(const std::string& sheet, int names) {
  const std::string styles =
      std::string(Start) + "<styleSheet" + Main +
      R"(><numFmts count="1"><numFmt numFmtId="164" formatCode="yyyy\-mm\-dd hh:mm"/></numFmts><cellXfs count="4">)"
      R"(<xf numFmtId="0"/><xf numFmtId="4"/><xf numFmtId="164"/><xf numFmtId="10"/></cellXfs></styleSheet>)";
  const std::string book = std::string(Start) + "<workbook" + Main + " xmlns:r=\"" + Office +
                           R"("><sheets><sheet name="Data" sheetId="1" r:id="rId1"/></sheets></workbook>)";
  return support::zipOf(
      {{"_rels/.rels", relationships(relationship("rId1", "officeDocument", "xl/workbook.xml"))},
       {"xl/workbook.xml", book},
       {"xl/_rels/workbook.xml.rels",
        relationships(relationship("rId1", "worksheet", "worksheets/sheet1.xml") +
                      relationship("rId2", "styles", "styles.xml") +
                      relationship("rId3", "sharedStrings", "sharedStrings.xml"))},
       {"xl/worksheets/sheet1.xml", sheet},
       {"xl/styles.xml", styles},
       {"xl/sharedStrings.xml", strings(names)}});
}

std::string writeSample(const std::string& name, const std::string& bytes) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path.string();
}

}  // namespace bench
