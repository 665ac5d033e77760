// The workbook that is embedded with a chart: its sheet, that sheet's table, and the order of calculation.

#include "deck/charts/ChartBook.h"

#include <algorithm>
#include <set>

#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/charts/ChartSheet.h"
#include "deck/charts/SheetXml.h"

namespace deck {
namespace {

bool overlap(const basic::Area& a, const basic::Area& b) {
  return a.firstRow <= b.lastRow && b.firstRow <= a.lastRow && a.firstColumn <= b.lastColumn &&
         b.firstColumn <= a.lastColumn;
}

/// Names as a table's columns must have them: none empty, none twice in any case.
std::vector<std::string> tableHeader(const ChartData& data, std::set<std::string> taken) {
  constexpr std::size_t LongestName = 200;
  std::vector<std::string> header;
  const auto add = [&](std::string name) {
    name = basic::Left(name, LongestName);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    if (name.empty()) name = " ";
    std::string unique = name;
    for (int i = 2; !taken.insert(basic::UCase(unique)).second; ++i) unique = name + std::to_string(i);
    header.push_back(std::move(unique));
  };
  add(data.corner);
  for (const ChartData::Column& column : data.columns) add(column.name);
  return header;
}

}  // namespace

ChartBook::ChartBook(std::string bytes, std::string name, ChartBlock block)
    : name_(std::move(name)),
      block_(std::move(block)),
      package_(opc::Package::fromBytes(std::move(bytes), name_)) {
  workbook_ = package_->related(opc::relationship::OfficeDocument);
  if (workbook_ == nullptr) refuse("it is no workbook");
  if (!workbook_->name().ends_with(".xml")) refuse("it is a binary workbook (.xlsb)");
  findSheet();
  readTables();
}

void ChartBook::refuse(const std::string& why) const {
  fail("its embedded workbook " + basic::InQuotes(name_) + " cannot take the data: " + why);
}

void ChartBook::findSheet() {
  const SheetXml book(workbook_->xml());
  for (const pugi::xml_node entry : book.children(book.child(book.root(), "sheets"), "sheet")) {
    const std::string name = entry.attribute("name").value();
    if (block_.sheet && !basic::EqualsIgnoreCase(name, *block_.sheet)) continue;
    opc::Part* part = workbook_->target(entry.attribute("r:id").value());
    if (part == nullptr) refuse("the part of its sheet " + basic::InQuotes(name) + " is missing");
    const SheetXml sheet(part->xml());
    if (!sheet.child(sheet.root(), "sheetData")) {
      if (!block_.sheet) continue;  // a sheet of another kind
      refuse("its sheet " + basic::InQuotes(name) + " is no worksheet");
    }
    sheetName_ = name;
    sheet_ = part;
    return;
  }
  refuse(block_.sheet ? "it has no sheet " + basic::InQuotes(*block_.sheet) : "it has no worksheet");
}

void ChartBook::readTables() {
  // Of the tables that the sheet has relationships to only those listed count.
  const SheetXml sheet(sheet_->xml());
  for (const pugi::xml_node entry : sheet.children(sheet.child(sheet.root(), "tableParts"), "tablePart")) {
    opc::Part* part = sheet_->target(entry.attribute("r:id").value());
    if (part == nullptr) refuse("the part of its sheet's table is missing");
    const SheetXml xml(part->xml());
    const pugi::xml_node table = xml.root();
    const auto place = basic::ParseReference(table.attribute("ref").value());
    if (!place) refuse("its table " + part->name() + " does not say where it is");
    const basic::Area& area = place->area;
    const bool holdsData = area.firstRow == block_.firstRow && area.firstColumn == block_.firstColumn;
    if (holdsData && (table.attribute("headerRowCount").as_int(1) == 0 ||
                      table.attribute("totalsRowCount").as_int() > 0)) {
      refuse("its table " + basic::InQuotes(table.attribute("displayName").value()) +
             " has no header or a row of totals");
    }
    tables_.push_back({part, area, holdsData});
  }
}

std::string ChartBook::filled(const ChartData& data) {
  const basic::Area area = block_.area(data);
  std::vector<std::string> header;
  for (const ChartData::Column& column : data.columns) header.push_back(column.name);
  header.insert(header.begin(), data.corner);
  for (Table& table : tables_) {
    if (table.holdsData) {
      header = tableHeader(data, {});
      fillTable(table, header, area);
    } else if (overlap(table.area, area)) {
      refuse("the data would run into another table of its sheet, at " + basic::AreaText(table.area));
    }
  }
  FilledSheet filled = fillSheet(*sheet_, data, header, area, block_.used);
  package_->setBytes(*sheet_, std::move(filled.text));
  if (filled.lostFormulas) forgetCalculationOrder();
  return package_->serialize();
}

void ChartBook::fillTable(Table& table, const std::vector<std::string>& header, const basic::Area& area) {
  const SheetXml xml(table.part->xml());
  pugi::xml_node root = xml.root();
  // A table that was just as large as the author's data is so again; a larger one keeps the rest.
  const auto last = [](std::uint32_t before, std::uint32_t used, std::uint32_t data) {
    return before <= used ? data : std::max(before, data);
  };
  basic::Area now = area;
  now.lastRow = last(table.area.lastRow, block_.used.lastRow, area.lastRow);
  now.lastColumn = last(table.area.lastColumn, block_.used.lastColumn, area.lastColumn);
  root.attribute("ref") = basic::AreaText(now).c_str();
  if (pugi::xml_node filter = xml.child(root, "autoFilter")) {
    if (filter.attribute("ref")) filter.attribute("ref") = basic::AreaText(now).c_str();
    filter.remove_children();
  }
  root.remove_child(xml.child(root, "sortState"));

  pugi::xml_node columns = xml.child(root, "tableColumns");
  const std::size_t count = now.lastColumn - now.firstColumn + 1;
  const std::vector<pugi::xml_node> nodes = xml.children(columns, "tableColumn");
  unsigned largestId = 0;
  for (const pugi::xml_node column : nodes) {
    largestId = std::max(largestId, column.attribute("id").as_uint());
  }
  for (std::size_t i = count; i < nodes.size(); ++i) columns.remove_child(nodes[i]);
  for (std::size_t i = 0; i < count; ++i) {
    pugi::xml_node column =
        i < nodes.size() ? nodes[i] : columns.append_child(xml.name("tableColumn").c_str());
    if (!column.attribute("id")) column.append_attribute("id") = ++largestId;
    if (!column.attribute("name")) column.append_attribute("name");
    if (i < header.size()) {
      column.attribute("name") = escapedForSheet(header[i]).c_str();
      column.remove_child(xml.child(column, "calculatedColumnFormula"));
    }
  }
  columns.attribute("count") = static_cast<unsigned long long>(count);
  table.part->markChanged();
}

void ChartBook::forgetCalculationOrder() {
  for (const opc::Relationship& relationship : workbook_->relationships()) {
    if (!relationship.is("calcChain")) continue;
    if (opc::Part* chain = workbook_->target(relationship)) package_->remove(*chain);
    package_->removeRelationship(*workbook_, relationship.id);
    return;
  }
}

}  // namespace deck
