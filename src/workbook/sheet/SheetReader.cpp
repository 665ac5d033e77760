// The cells of a worksheet, row by row, as they stand in its XML.

#include "workbook/sheet/SheetReader.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "workbook/Failure.h"
#include "workbook/book/IsoDate.h"
#include "workbook/book/RichText.h"
#include "workbook/book/Xml.h"

namespace workbook {
namespace {

const std::string& partOf(const Book& book, const SheetEntry& sheet) {
  if (sheet.part.empty()) {
    fail("workbook " + basic::InQuotes(book.parts().path()) + " does not say where its sheet " +
         basic::InQuotes(sheet.name) + " is");
  }
  return sheet.part;
}

/// A number in the notation of XML; not "inf" and "nan", which the library
/// function would take.
std::optional<double> parseNumber(std::string_view text) {
  const bool isNumber =
      !text.empty() && (text[0] == '-' || text[0] == '.' || (text[0] >= '0' && text[0] <= '9'));
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (!isNumber || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

SheetReader::SheetReader(const Book& book, const SheetEntry& sheet, const basic::Area& area)
    : book_(book),
      sheet_(sheet),
      area_(area),
      rows_(book.parts(), partOf(book, sheet), "sheetData", "row"),
      cells_(area.lastColumn - area.firstColumn + 1) {}

std::optional<basic::Area> SheetReader::declared() const {
  pugi::xml_document document;
  const std::string& tag = rows_.dimensionTag();
  document.load_buffer(tag.data(), tag.size(), pugi::parse_minimal | pugi::parse_fragment);
  const auto reference = basic::ParseReference(document.first_child().attribute("ref").value());
  return reference ? std::optional(reference->area) : std::nullopt;
}

bool SheetReader::next() {
  while (row_ < area_.lastRow) {
    const pugi::xml_node row = rows_.next();
    if (!row) break;
    const pugi::xml_attribute named = row.attribute("r");
    const auto number = named ? xml::number(named.value()) : row_ + 1;
    if (!number || *number <= row_ || *number > basic::MaximumRow) {
      book_.parts().failIn(
          sheet_.part, "has a row " + basic::InQuotes(named.value()) + " after row " + std::to_string(row_));
    }
    row_ = *number;
    if (row_ < area_.firstRow) continue;
    if (row_ > area_.lastRow) return false;
    readRow(row);
    return true;
  }
  row_ = basic::MaximumRow;
  return false;
}

void SheetReader::readRow(pugi::xml_node row) {
  std::fill(cells_.begin(), cells_.end(), CellData());
  texts_.clear();
  column_ = 0;
  lastFilled_ = 0;
  // The library's iterators cost several calls a step.
  for (pugi::xml_node cell = row.first_child(); cell; cell = cell.next_sibling()) {
    if (xml::isNamed(cell, rows_.prefix(), "c")) readCell(cell);
  }
}

/// What goes to the cells of the row; their order in the part does not matter.
void SheetReader::readCell(pugi::xml_node cell) {
  std::string_view type = "n";
  std::uint32_t style = 0;
  ++column_;
  for (pugi::xml_attribute attribute = cell.first_attribute(); attribute;
       attribute = attribute.next_attribute()) {
    const std::string_view name = attribute.name();
    if (name == "r") {
      const auto place = basic::ParsePlace(attribute.value());
      if (!place) {
        book_.parts().failIn(sheet_.part, "has a cell " + basic::InQuotes(attribute.value()) + " in row " +
                                              std::to_string(row_));
      }
      column_ = place->column;
    } else if (name == "t") {
      type = attribute.value();
    } else if (name == "s") {
      style = xml::number(attribute.value()).value_or(0);
    }
  }
  if (column_ > basic::MaximumColumn) {
    book_.parts().failIn(sheet_.part, "has more than 16,384 cells in row " + std::to_string(row_));
  }
  CellData data = valueOf(cell, type);
  data.style = style;
  if (data.kind != CellData::Kind::Blank) lastFilled_ = std::max(lastFilled_, column_);
  if (column_ >= area_.firstColumn && column_ <= area_.lastColumn) cells_[column_ - area_.firstColumn] = data;
}

std::string_view SheetReader::kept(std::string text) { return texts_.emplace_back(std::move(text)); }

CellData SheetReader::valueOf(pugi::xml_node cell, std::string_view type) {
  CellData data;
  pugi::xml_node value;
  for (pugi::xml_node child = cell.first_child(); child; child = child.next_sibling()) {
    if (xml::isNamed(child, rows_.prefix(), "v")) value = child;
    if (!xml::isNamed(child, rows_.prefix(), "is")) continue;
    std::string text;
    appendRichText(text, child, rows_.prefix());
    data.kind = CellData::Kind::Text;
    data.text = kept(std::move(text));
    return data;
  }
  // A formula that was never calculated has no value.
  const std::string_view text = value.child_value();
  if (!value || (text.empty() && type != "str")) return data;

  if (type == "s") {
    data.kind = CellData::Kind::SharedText;
    // A number that is none, or too high, has no text.
    data.shared = xml::number(text).value_or(static_cast<std::uint32_t>(-1));
  } else if (type == "n") {
    const auto number = parseNumber(text);
    data.kind = number ? CellData::Kind::Number : CellData::Kind::Text;
    data.number = number.value_or(0.0);
    data.text = text;
  } else if (type == "b") {
    data.kind = CellData::Kind::Boolean;
    data.number = text == "1" || text == "true" ? 1.0 : 0.0;
  } else if (type == "e") {
    data.kind = CellData::Kind::Error;
    data.text = text;
  } else if (type == "d") {
    const auto serial = parseIsoDate(text, book_.dateSystem());
    data.kind = serial ? CellData::Kind::Number : CellData::Kind::Text;
    data.number = serial.value_or(0.0);
    data.text = text;
  } else {
    std::string unescaped;
    appendEscapedText(unescaped, value);
    data.kind = CellData::Kind::Text;
    data.text = kept(std::move(unescaped));
  }
  return data;
}

}  // namespace workbook
