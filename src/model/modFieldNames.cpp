// How the names of shapes and marks in their texts are taken apart.

#include "model/modFieldNames.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"

namespace LF2000::modFieldNames {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
/// Every byte of a character beyond ASCII counts as a letter's.
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}
bool IsSeparator(char c) { return !IsDigit(c) && !IsLetter(c); }

template <typename Belongs>
std::size_t CountLeading(std::string_view text, const Belongs& belongs) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), belongs) - text.begin());
}

template <typename Belongs>
std::size_t CountTrailing(std::string_view text, const Belongs& belongs) {
  return static_cast<std::size_t>(std::find_if_not(text.rbegin(), text.rend(), belongs) - text.rbegin());
}

/// A row number; 0 when the text is none.
std::int32_t RowIn(std::string_view digits) {
  std::int32_t row = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), row);
  return error == std::errc{} && end == digits.data() + digits.size() && row > 0 ? row : 0;
}

std::string Loose(std::string_view name) {
  std::string key = basic::UCase(name);
  std::erase_if(key, [](char c) { return c == ' ' || c == '_' || c == '-'; });
  return key;
}

/// Looks the text up, with ever fewer of the separators at its beginning.
const std::string* FindBehind(std::string_view text, const ColumnNames& columns) {
  const std::string_view whole = text;
  for (std::size_t left = CountLeading(text, IsSeparator) + 1; left > 0; --left, text.remove_prefix(1)) {
    if (const std::string* column = columns.Find(text)) return column;
    if (text.empty()) break;
  }
  return columns.FindLoosely(whole);
}

/// Looks the text up, with ever fewer of the separators at its end.
const std::string* FindBefore(std::string_view text, const ColumnNames& columns) {
  const std::string_view whole = text;
  for (std::size_t left = CountTrailing(text, IsSeparator) + 1; left > 0; --left, text.remove_suffix(1)) {
    if (const std::string* column = columns.Find(text)) return column;
    if (text.empty()) break;
  }
  return columns.FindLoosely(whole);
}

/// "Item 1", "Item row 1", "Item (1)".
std::optional<Field> NumberBehind(std::string_view name, const ColumnNames& columns) {
  name.remove_suffix(CountTrailing(name, IsSeparator));
  const std::size_t digits = CountTrailing(name, IsDigit);
  const std::int32_t row = RowIn(name.substr(name.size() - digits));
  if (row == 0) return {};
  name.remove_suffix(digits);
  if (const std::string* column = FindBefore(name, columns)) return Field{*column, row};
  name.remove_suffix(CountTrailing(name, IsSeparator));
  name.remove_suffix(CountTrailing(name, IsLetter));
  if (name.empty() || !IsSeparator(name.back())) return {};
  const std::string* column = FindBefore(name, columns);
  return column != nullptr ? std::optional(Field{*column, row}) : std::nullopt;
}

/// "1 Item", "p1 Item", "row 1: Item".
std::optional<Field> NumberBefore(std::string_view name, const ColumnNames& columns) {
  name.remove_prefix(CountLeading(name, IsSeparator));
  name.remove_prefix(CountLeading(name, IsLetter));
  name.remove_prefix(CountLeading(name, IsSeparator));
  const std::size_t digits = CountLeading(name, IsDigit);
  const std::int32_t row = RowIn(name.substr(0, digits));
  if (row == 0) return {};
  const std::string* column = FindBehind(name.substr(digits), columns);
  return column != nullptr ? std::optional(Field{*column, row}) : std::nullopt;
}

/// Without blanks, line ends and no-break spaces around it.
std::string_view Stripped(std::string_view text) {
  constexpr std::string_view NoBreakSpace = "\u00A0";
  while (true) {
    if (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') {
      text.remove_prefix(1);
    } else if (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') {
      text.remove_suffix(1);
    } else if (text.starts_with(NoBreakSpace)) {
      text.remove_prefix(NoBreakSpace.size());
    } else if (text.ends_with(NoBreakSpace)) {
      text.remove_suffix(NoBreakSpace.size());
    } else {
      return text;
    }
  }
}

constexpr std::string_view Open = "{{";
constexpr std::string_view Close = "}}";

/// What stands between the braces of a mark.
Mark ReadMark(std::string_view inner) {
  constexpr std::size_t MostDigits = 3;
  Mark mark;
  const std::size_t lastDot = inner.rfind('.');
  if (lastDot == std::string_view::npos) {
    mark.Problem = "names no row: it is written {{Column.1}}";
    return mark;
  }
  mark.Value.Row = RowIn(Stripped(inner.substr(lastDot + 1)));
  if (mark.Value.Row == 0) {
    mark.Problem = "does not end with the number of a row: it is written {{Column.1}}";
    return mark;
  }
  std::string_view column = inner.substr(0, lastDot);
  const std::size_t firstDot = column.find('.');
  const std::string_view number = Stripped(column.substr(0, firstDot));
  if (firstDot != std::string_view::npos && number.size() <= MostDigits && RowIn(number) != 0) {
    mark.Connection = modGlobalFunctions::Format000(RowIn(number));
    column.remove_prefix(firstDot + 1);
  }
  mark.Value.Column = Stripped(column);
  if (mark.Value.Column.empty()) mark.Problem = "names no column: it is written {{Column.1}}";
  return mark;
}

}  // namespace

bool CanBeLinked(std::string_view column) {
  constexpr unsigned char FirstPrintable = ' ';
  return std::none_of(column.begin(), column.end(),
                      [](char c) { return static_cast<unsigned char>(c) < FirstPrintable; });
}

ColumnNames::ColumnNames(std::vector<std::string> columns) : columns_(std::move(columns)) {
  for (std::size_t i = 1; i < columns_.size(); ++i) {
    if (columns_[i].empty()) continue;
    byName_.emplace(basic::UCase(columns_[i]), i);
    byLooseName_.emplace(Loose(columns_[i]), i);
  }
}

const std::string* ColumnNames::Find(std::string_view name) const {
  const auto found = byName_.find(basic::UCase(name));
  return found == byName_.end() ? nullptr : &columns_[found->second];
}

const std::string* ColumnNames::FindLoosely(std::string_view name) const {
  const std::string key = Loose(name);
  const auto found = byLooseName_.find(key);
  return key.empty() || found == byLooseName_.end() ? nullptr : &columns_[found->second];
}

std::string ColumnNames::List() const {
  std::string list;
  for (std::size_t i = 1; i < columns_.size(); ++i) list += (i == 1 ? "" : ", ") + columns_[i];
  return list;
}

std::optional<Field> FromShapeName(std::string_view name, const ColumnNames& columns) {
  const std::optional<Field> before = NumberBefore(name, columns);
  const std::optional<Field> behind = NumberBehind(name, columns);
  if (before && behind) return before->Column.size() > behind->Column.size() ? before : behind;
  return before ? before : behind;
}

std::optional<Field> Suggest(std::string_view name, const ColumnNames& columns) {
  if (auto field = FromShapeName(name, columns)) return field;
  while (!name.empty()) {
    if (const std::string* column = columns.FindLoosely(name)) return Field{*column, 0};
    name.remove_prefix(CountLeading(name, [](char c) { return !IsSeparator(c); }));
    name.remove_prefix(CountLeading(name, IsSeparator));
  }
  return {};
}

std::optional<Field> Guess(std::string_view name) {
  const auto bare = [](std::string_view text) {
    text.remove_prefix(CountLeading(text, IsSeparator));
    text.remove_suffix(CountTrailing(text, IsSeparator));
    return text;
  };
  name = bare(name);
  const std::size_t word = CountLeading(name, IsLetter);
  const std::string_view behindWord = bare(name.substr(word));
  const std::size_t digits = CountLeading(behindWord, IsDigit);
  const std::size_t lastDigits = CountTrailing(name, IsDigit);
  const std::string_view column = bare(behindWord.substr(digits));
  if (const std::int32_t row = RowIn(behindWord.substr(0, digits)); row > 0 && !column.empty()) {
    return Field{std::string(column), row};
  }
  const std::string_view before = bare(name.substr(0, name.size() - lastDigits));
  const std::int32_t row = RowIn(name.substr(name.size() - lastDigits));
  return row > 0 && !before.empty() ? std::optional(Field{std::string(before), row}) : std::nullopt;
}

std::optional<Mark> FromText(std::string_view text) {
  const std::size_t open = text.find(Open);
  if (open == std::string_view::npos || text.find(Close, open) == std::string_view::npos) return {};
  text = Stripped(text);
  const bool isAlone = text.starts_with(Open) && text.ends_with(Close) &&
                       text.find(Open, Open.size()) == std::string_view::npos;
  if (!isAlone) {
    Mark mark;
    mark.Problem = "does not stand alone: a linked shape shows the value and nothing else";
    return mark;
  }
  text.remove_prefix(Open.size());
  text.remove_suffix(Close.size());
  return ReadMark(text);
}

}  // namespace LF2000::modFieldNames
