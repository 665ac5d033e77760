// References to cells are read and written.

#include "basic/CellReference.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "basic/Strings.h"

namespace basic {
namespace {

/// A corner: a cell, or with a 0 a whole row or column.
using Corner = CellPlace;

bool TakeDollar(std::string_view& text) {
  if (!text.starts_with('$')) return false;
  text.remove_prefix(1);
  return true;
}

/// Takes column letters off the front; 0 when there are none, too many for a
/// sheet otherwise.
std::uint32_t TakeColumn(std::string_view& text) {
  std::uint32_t column = 0;
  while (!text.empty()) {
    const char c = text.front();
    const bool isLower = c >= 'a' && c <= 'z';
    if (!isLower && (c < 'A' || c > 'Z')) break;
    column =
        std::min(column * 26 + static_cast<std::uint32_t>(c - (isLower ? 'a' : 'A')) + 1, MaximumColumn + 1);
    text.remove_prefix(1);
  }
  return column;
}

/// Likewise the digits of a row.
std::uint32_t TakeRow(std::string_view& text) {
  std::uint32_t row = 0;
  while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
    row = std::min(row * 10 + static_cast<std::uint32_t>(text.front() - '0'), MaximumRow + 1);
    text.remove_prefix(1);
  }
  return row;
}

std::optional<Corner> ParseCorner(std::string_view text) {
  bool isDollarOpen = TakeDollar(text);
  Corner corner;
  corner.column = TakeColumn(text);
  if (corner.column > MaximumColumn) return std::nullopt;
  if (corner.column > 0) isDollarOpen = TakeDollar(text);
  const bool hasRow = !text.empty();
  corner.row = TakeRow(text);
  if (!text.empty() || corner.row > MaximumRow || (hasRow && corner.row == 0)) return std::nullopt;
  if ((isDollarOpen && !hasRow) || (corner.row == 0 && corner.column == 0)) return std::nullopt;
  return corner;
}

std::optional<Area> ParseArea(std::string_view text) {
  const std::size_t colon = text.find(':');
  const bool isPair = colon != std::string_view::npos;
  const auto first = ParseCorner(Trim(text.substr(0, colon)));
  const auto last = isPair ? ParseCorner(Trim(text.substr(colon + 1))) : first;
  if (!first || !last) return std::nullopt;
  const bool hasColumns = first->column > 0;
  const bool hasRows = first->row > 0;
  if (hasColumns != (last->column > 0) || hasRows != (last->row > 0)) return std::nullopt;
  if (!isPair && !(hasColumns && hasRows)) return std::nullopt;
  Area area{1, MaximumRow, 1, MaximumColumn};
  if (hasRows) std::tie(area.firstRow, area.lastRow) = std::minmax(first->row, last->row);
  if (hasColumns) std::tie(area.firstColumn, area.lastColumn) = std::minmax(first->column, last->column);
  return area;
}

/// Takes the sheet's name and the exclamation mark off the front; nothing when
/// they are not well written.
std::optional<std::string> TakeSheet(std::string_view& text) {
  std::string name;
  if (!text.starts_with('\'')) {
    const std::size_t mark = text.find('!');
    name = text.substr(0, mark);
    text.remove_prefix(mark + 1);
    return name.empty() ? std::nullopt : std::optional(std::move(name));
  }
  std::size_t at = 1;
  for (; at < text.size(); ++at) {
    if (text[at] == '\'') {
      if (!text.substr(at + 1).starts_with('\'')) break;
      ++at;
    }
    name += text[at];
  }
  if (!text.substr(std::min(at + 1, text.size())).starts_with('!') || name.empty()) return std::nullopt;
  text.remove_prefix(at + 2);
  return name;
}

/// Whether a formula may name the sheet without quotes.
bool IsPlainName(std::string_view name) {
  const auto isPlain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  return std::all_of(name.begin(), name.end(), isPlain) && !(name.front() >= '0' && name.front() <= '9') &&
         !ParsePlace(name);
}

}  // namespace

std::optional<Reference> ParseReference(std::string_view text) {
  text = Trim(text);
  Reference reference;
  if (text.find('!') != std::string_view::npos) {
    reference.sheet = TakeSheet(text);
    if (!reference.sheet) return std::nullopt;
  }
  const auto area = ParseArea(text);
  if (!area) return std::nullopt;
  reference.area = *area;
  return reference;
}

std::optional<CellPlace> ParsePlace(std::string_view text) {
  CellPlace place;
  place.column = TakeColumn(text);
  place.row = TakeRow(text);
  const bool isWithin =
      place.column >= 1 && place.column <= MaximumColumn && place.row >= 1 && place.row <= MaximumRow;
  if (!text.empty() || !isWithin) return std::nullopt;
  return place;
}

std::string ColumnLetters(std::uint32_t column) {
  std::string letters;
  for (; column > 0; column = (column - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % 26));
  }
  return letters;
}

std::string AreaText(const Area& area) {
  std::string text = ColumnLetters(area.firstColumn) + std::to_string(area.firstRow);
  if (area.firstRow != area.lastRow || area.firstColumn != area.lastColumn) {
    text += ":" + ColumnLetters(area.lastColumn) + std::to_string(area.lastRow);
  }
  return text;
}

std::string ReferenceText(const Reference& reference) {
  std::string text;
  if (reference.sheet && IsPlainName(*reference.sheet)) {
    text = *reference.sheet + "!";
  } else if (reference.sheet) {
    text = "'" + Replace(*reference.sheet, "'", "''") + "'!";
  }
  const Area& area = reference.area;
  const auto corner = [](std::uint32_t column, std::uint32_t row) {
    return "$" + ColumnLetters(column) + "$" + std::to_string(row);
  };
  text += corner(area.firstColumn, area.firstRow);
  if (area.firstRow != area.lastRow || area.firstColumn != area.lastColumn) {
    text += ":" + corner(area.lastColumn, area.lastRow);
  }
  return text;
}

}  // namespace basic
