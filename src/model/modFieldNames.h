#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Columns and rows of a connection as authors name them, in the names of shapes and in their texts.
namespace LF2000::modFieldNames {

/// A value of a connection's data.
struct Field {
  std::string Column;
  std::int32_t Row = 0;
};

/// Whether a link can hold the column's name: tags keep no control characters, a tab among them.
[[nodiscard]] bool CanBeLinked(std::string_view column);

/// The columns of a connection, in any case of letters.
class ColumnNames {
 public:
  /// As clsConnection::Columns gives them: from index 1.
  explicit ColumnNames(std::vector<std::string> columns);
  /// The column's own spelling; null without one of that name.
  [[nodiscard]] const std::string* Find(std::string_view name) const;
  /// The same, whatever blanks, "_" and "-" the name has more or less.
  [[nodiscard]] const std::string* FindLoosely(std::string_view name) const;
  /// All of them, for messages: "Time, Train".
  [[nodiscard]] std::string List() const;

 private:
  std::vector<std::string> columns_;
  std::unordered_map<std::string, std::size_t> byName_;       // keys in upper case
  std::unordered_map<std::string, std::size_t> byLooseName_;  // the same without blanks, "_" and "-"
};

/// The field that a shape's name means: a column and a row number, in either order, which anything but
/// letters and digits may part ("Item 1", "Item1", "1.Item", "Item_01"); a word may introduce the number
/// ("p1 Item", "Item row 1"). Blanks, "_" and "-" within the column do not count. Nothing when it means none.
/// Of columns that fit, the longest.
[[nodiscard]] std::optional<Field> FromShapeName(std::string_view name, const ColumnNames& columns);

/// What the name suggests where an author looks it over: FromShapeName, else a column alone ("Price", "Offer
/// price") with the row 0.
[[nodiscard]] std::optional<Field> Suggest(std::string_view name, const ColumnNames& columns);

/// The field that a name seems to mean where no columns are known yet: "p1 Item", "Item 1". Nothing where it
/// speaks of no number, or of nothing else.
[[nodiscard]] std::optional<Field> Guess(std::string_view name);

/// A mark that an author has typed into a shape: {{Column.Row}} or {{Connection.Column.Row}}, as
/// {{Item.1}} and {{001.Item.1}}. Blanks within do not count.
struct Mark {
  /// Three digits; empty where the mark names none.
  std::string Connection;
  Field Value;
  /// Why it cannot be read; empty when it can.
  std::string Problem;
};

/// Nothing where the text holds no mark.
[[nodiscard]] std::optional<Mark> FromText(std::string_view text);

}  // namespace LF2000::modFieldNames
