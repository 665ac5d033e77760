// What a link means by its sheet and range, in the notations that programs write it in.

#include "workbook/sheet/LinkedItem.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "basic/Strings.h"
#include "workbook/Failure.h"
#include "workbook/sheet/SheetReader.h"

namespace workbook {
namespace {

/// Takes "R12C3" off the front of a text.
std::optional<basic::CellPlace> takePlace(std::string_view& text) {
  const auto takeNumber = [&text](char letter) -> std::uint32_t {
    std::uint32_t number = 0;
    if (text.empty() || (text.front() & ~0x20) != letter) return 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), number);
    if (error != std::errc()) return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
  };
  const std::uint32_t row = takeNumber('R');
  const std::uint32_t column = takeNumber('C');
  if (row < 1 || row > basic::MaximumRow || column < 1 || column > basic::MaximumColumn) return std::nullopt;
  return basic::CellPlace{row, column};
}

/// "R1C1:R5C4" or "R1C1".
std::optional<basic::Area> parseRowColumn(std::string_view text) {
  const auto first = takePlace(text);
  if (!first) return std::nullopt;
  auto last = first;
  if (!text.empty()) {
    if (text.front() != ':') return std::nullopt;
    text.remove_prefix(1);
    last = takePlace(text);
  }
  if (!last || !text.empty()) return std::nullopt;
  return basic::Area{std::min(first->row, last->row), std::max(first->row, last->row),
                     std::min(first->column, last->column), std::max(first->column, last->column)};
}

std::size_t firstWorksheet(const Book& book) {
  const auto& sheets = book.sheets();
  const auto found =
      std::find_if(sheets.begin(), sheets.end(), [](const auto& each) { return each.isWorksheet; });
  if (found == sheets.end()) fail("workbook " + basic::InQuotes(book.parts().path()) + " has no worksheet");
  return static_cast<std::size_t>(found - sheets.begin());
}

/// From the first cell to the last one with a value.
Book::Target allOf(const Book& book, std::size_t sheet) {
  SheetReader reader(book, book.sheets()[sheet], {1, basic::MaximumRow, 1, 1});
  basic::Area area;
  while (reader.next()) {
    if (!reader.hasValues()) continue;
    area.lastRow = reader.row();
    area.lastColumn = std::max(area.lastColumn, reader.lastFilled());
  }
  return {sheet, area};
}

bool hasSheet(const Book& book, std::string_view name) {
  return std::any_of(book.sheets().begin(), book.sheets().end(), [&](const SheetEntry& sheet) {
    return sheet.isWorksheet && basic::EqualsIgnoreCase(sheet.name, name);
  });
}

std::string_view withoutQuotes(std::string_view name) {
  if (name.size() >= 2 && name.front() == '\'' && name.back() == '\'') return name.substr(1, name.size() - 2);
  return name;
}

Book::Target find(const Book& book, std::string_view item) {
  if (item.empty()) return allOf(book, firstWorksheet(book));
  const std::size_t mark = item.rfind('!');
  if (mark == std::string_view::npos) {
    if (hasSheet(book, withoutQuotes(item))) return allOf(book, book.find(withoutQuotes(item)));
    const auto area = parseRowColumn(item);
    return area ? Book::Target{firstWorksheet(book), *area} : book.resolve(firstWorksheet(book), item);
  }
  const std::size_t sheet = book.find(withoutQuotes(item.substr(0, mark)));
  const std::string_view range = item.substr(mark + 1);
  if (range.empty()) return allOf(book, sheet);
  const auto area = parseRowColumn(range);
  return area ? Book::Target{sheet, *area} : book.resolve(sheet, range);
}

}  // namespace

Book::Target findLinkedItem(const Book& book, std::string_view item) {
  Book::Target target = find(book, item);
  const bool hasAllRows = target.area.lastRow == basic::MaximumRow;
  const bool hasAllColumns = target.area.lastColumn == basic::MaximumColumn;
  if (!hasAllRows && !hasAllColumns) return target;
  // Whole columns and rows end with the data.
  const basic::Area all = allOf(book, target.sheet).area;
  if (hasAllRows) target.area.lastRow = std::max(all.lastRow, target.area.firstRow);
  if (hasAllColumns) target.area.lastColumn = std::max(all.lastColumn, target.area.firstColumn);
  return target;
}

}  // namespace workbook
