// Cells of a connection as the numbers, dates and texts of a chart.

#include "deck/charts/ChartData.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "basic/CellReference.h"
#include "basic/Conversion.h"
#include "basic/NumberText.h"
#include "basic/Strings.h"
#include "deck/Failure.h"
#include "opc/Xml.h"

namespace deck {
namespace {

constexpr double Gap = std::numeric_limits<double>::quiet_NaN();

bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

std::string textOf(const basic::Variant& cell) {
  if (basic::IsNull(cell)) return {};
  if (const auto* text = std::get_if<std::string>(&cell)) return opc::xml::legalText(*text);
  return basic::CStr(cell);
}

std::optional<double> numberIn(std::string_view text, const basic::Locale& locale) {
  try {
    const auto number = basic::ParseNumber(text, locale, basic::Grouping::Allowed);
    return number && std::isfinite(*number) ? number : std::nullopt;
  } catch (const basic::Error&) {
    return std::nullopt;  // beyond every number
  }
}

std::optional<double> dateIn(std::string_view text) {
  try {
    return basic::CDate(text).serial;
  } catch (const basic::Error&) {
    return std::nullopt;
  }
}

/// A value that is a number by its type.
std::optional<double> typedNumber(const basic::Variant& cell) {
  if (const auto* value = std::get_if<double>(&cell)) {
    return std::isfinite(*value) ? std::optional(*value) : std::nullopt;
  }
  if (const auto* value = std::get_if<std::int32_t>(&cell)) return *value;
  if (const auto* value = std::get_if<std::int64_t>(&cell)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<bool>(&cell)) return *value ? 1 : 0;
  if (const auto* value = std::get_if<basic::Decimal>(&cell)) {
    double number = 0;
    std::from_chars(value->digits.data(), value->digits.data() + value->digits.size(), number);
    return number;
  }
  return std::nullopt;
}

std::optional<double> numberOf(const basic::Variant& cell, const basic::Locale& locale) {
  if (const auto* text = std::get_if<std::string>(&cell)) return numberIn(*text, locale);
  if (const auto* date = std::get_if<basic::Date>(&cell)) return date->serial;
  return typedNumber(cell);
}

bool isBlank(const basic::Variant& cell) {
  const auto* text = std::get_if<std::string>(&cell);
  return text != nullptr ? basic::WithoutWhite(*text).empty()
                         : basic::IsNull(cell) || std::holds_alternative<basic::Empty>(cell);
}

/// Whether a number can only be meant so: one decimal sign, behind all groups of thousands, and what follows
/// it is no such group itself.
bool isWrittenWith(char decimal, char grouping, std::string_view text) {
  constexpr std::size_t Group = 3;
  text = basic::WithoutWhite(text);
  const std::size_t at = text.find(decimal);
  const std::size_t grouped = text.rfind(grouping);
  if (at == std::string_view::npos || at != text.rfind(decimal)) return false;
  const bool hasGroups = grouped != std::string_view::npos;
  if (hasGroups ? grouped > at : at + 1 + Group == text.size()) return false;
  return text.find_first_not_of("+-.,0123456789") == std::string_view::npos;
}

/// The user's settings; with comma and point changed where the numbers of a column tell that they were
/// written by others: "4,80" is no 480.
basic::Locale settingsOf(const MSGraph::Table& table, std::size_t column) {
  basic::Locale locale = basic::UserLocale();
  const char own = locale.decimalSeparator == "," ? ',' : '.';
  const char other = own == ',' ? '.' : ',';
  bool isOthers = false;
  for (std::size_t row = 1; row < table.rows(); ++row) {
    const auto* text = std::get_if<std::string>(&table.cell(row, column));
    if (text == nullptr) continue;
    if (isWrittenWith(own, other, *text)) return locale;
    isOthers = isOthers || isWrittenWith(other, own, *text);
  }
  if (isOthers) {
    locale.decimalSeparator = other;
    locale.thousandsSeparator = own;
  }
  return locale;
}

Category categoryOf(const basic::Variant& cell, CategoryKind kind, const basic::Locale& locale) {
  if (isBlank(cell)) return {};
  std::optional<double> number = kind == CategoryKind::Text ? typedNumber(cell) : numberOf(cell, locale);
  if (const auto* text = std::get_if<std::string>(&cell); kind == CategoryKind::Date && text && !number) {
    number = dateIn(*text);
  }
  if (number) return *number;
  return kind == CategoryKind::XValues ? Category() : textOf(cell);
}

void requireRoom(const MSGraph::Table& table) {
  const auto tooMany = [](const char* what, std::size_t count, std::size_t most) {
    if (count > most) {
      fail("the data have " + std::to_string(count) + " " + what + ", more than the " + std::to_string(most) +
           " that a chart can have");
    }
  };
  constexpr std::size_t MostSeries = 255;
  if (table.columns() < 2) fail("the data need a column of categories and at least one of values");
  tooMany("rows", table.rows() - 1, basic::MaximumRow - 1);
  tooMany("columns of values", table.columns() - 1, MostSeries);
}

std::string nameOf(const MSGraph::Table& table, std::size_t column) { return textOf(table.cell(0, column)); }

/// Text among numbers is a gap; nothing but text is the wrong column.
void requireNumbers(const MSGraph::Table& table, std::size_t column, const basic::Locale& locale) {
  std::size_t textRow = 0;
  for (std::size_t row = 1; row < table.rows(); ++row) {
    const basic::Variant& cell = table.cell(row, column);
    if (isBlank(cell)) continue;
    if (numberOf(cell, locale)) return;
    if (textRow == 0) textRow = row;
  }
  if (textRow == 0) return;
  fail("its column " + basic::InQuotes(nameOf(table, column)) +
       " holds text where the chart needs numbers (" +
       basic::InQuotes(basic::Left(textOf(table.cell(textRow, column)), 40)) + " in row " +
       std::to_string(textRow) + ")");
}

ChartData::Column columnOf(const MSGraph::Table& table, std::size_t column) {
  const basic::Locale locale = settingsOf(table, column);
  requireNumbers(table, column, locale);
  ChartData::Column result{nameOf(table, column), {}};
  result.values.reserve(table.rows() - 1);
  for (std::size_t row = 1; row < table.rows(); ++row) {
    result.values.push_back(numberOf(table.cell(row, column), locale).value_or(Gap));
  }
  return result;
}

}  // namespace

bool ChartData::hasNumericCategories() const {
  const auto is = [&](std::size_t alternative) {
    return [alternative](const Category& category) { return category.index() == alternative; };
  };
  return std::none_of(categories.begin(), categories.end(), is(2)) &&
         std::any_of(categories.begin(), categories.end(), is(1));
}

bool ChartData::shows(const ChartData& other) const {
  return categories == other.categories &&
         std::equal(columns.begin(), columns.end(), other.columns.begin(), other.columns.end(),
                    [](const Column& a, const Column& b) {
                      return a.name == b.name && std::equal(a.values.begin(), a.values.end(),
                                                            b.values.begin(), b.values.end(), same);
                    });
}

MSGraph::Table ChartData::table() const {
  MSGraph::Table table(rows() + 1, columns.size() + 1);
  table.cell(0, 0, corner);
  for (std::size_t row = 0; row < rows(); ++row) {
    if (const auto* number = std::get_if<double>(&categories[row])) table.cell(row + 1, 0, *number);
    if (const auto* text = std::get_if<std::string>(&categories[row])) table.cell(row + 1, 0, *text);
  }
  for (std::size_t column = 0; column < columns.size(); ++column) {
    table.cell(0, column + 1, columns[column].name);
    for (std::size_t row = 0; row < rows(); ++row) {
      const double value = columns[column].values[row];
      if (!std::isnan(value)) table.cell(row + 1, column + 1, value);
    }
  }
  return table;
}

ChartData chartData(const MSGraph::Table& table, CategoryKind categories) {
  requireRoom(table);
  const basic::Locale locale = settingsOf(table, 0);
  if (categories == CategoryKind::XValues) requireNumbers(table, 0, locale);
  ChartData data;
  data.corner = textOf(table.cell(0, 0));
  data.categories.reserve(table.rows() - 1);
  for (std::size_t row = 1; row < table.rows(); ++row) {
    data.categories.push_back(categoryOf(table.cell(row, 0), categories, locale));
  }
  for (std::size_t column = 1; column < table.columns(); ++column) {
    data.columns.push_back(columnOf(table, column));
  }
  return data;
}

}  // namespace deck
