// How rows are made up from the names and texts of a presentation's shapes.

#include "model/modSampleRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "basic/Strings.h"
#include "model/modFieldNames.h"
#include "model/modLinkable.h"
#include "model/modRelink.h"
#include "model/modSample.h"
#include "model/modSlides.h"
#include "model/modTable.h"

namespace LF2000::modSampleRows {

namespace {

using modLinkable::Shows;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A column in making.
struct Column {
  std::string Name;
  /// What the author wrote, by row.
  std::map<std::int32_t, std::string> Texts;
};

class Columns {
 public:
  Column& Of(const std::string& name) {
    const auto known = std::find_if(columns_.begin(), columns_.end(), [&](const Column& each) {
      return basic::EqualsIgnoreCase(each.Name, name);
    });
    if (known != columns_.end()) return *known;
    columns_.push_back({name, {}});
    return columns_.back();
  }
  [[nodiscard]] const std::vector<Column>& All() const { return columns_; }

 private:
  std::vector<Column> columns_;
};

void AddText(Column& column, std::int32_t row, const std::string& text) {
  if (!basic::Trim(text).empty()) column.Texts.try_emplace(row, text);
}

/// Names count where they go on from 1 ("p1 Item", "p2 Item"): a lone "TextBox 7" speaks of no column.
void AddNamed(Columns& columns, PowerPoint::Slide& slide) {
  Columns named;
  std::map<std::string, std::int32_t> nextRows;
  std::vector<std::pair<modFieldNames::Field, std::shared_ptr<PowerPoint::Shape>>> fields;
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    auto field = modFieldNames::Guess(shape->Name());
    if (field && modLinkable::Examine(*shape).What == Shows::Text) fields.emplace_back(*field, shape);
  });
  std::stable_sort(fields.begin(), fields.end(),
                   [](const auto& a, const auto& b) { return a.first.Row < b.first.Row; });
  for (const auto& [field, shape] : fields) {
    std::int32_t& rows = nextRows[basic::UCase(field.Column)];
    if (field.Row == rows + 1) rows = field.Row;
  }
  for (const auto& [field, shape] : fields) {
    if (nextRows[basic::UCase(field.Column)] < 2) continue;
    AddText(columns.Of(field.Column), field.Row, shape->TextFrame()->TextRange()->Text());
  }
}

void AddTable(Columns& columns, const PowerPoint::Table& table) {
  const std::vector<std::string> headers = modTable::HeaderTexts(table);
  for (std::size_t i = 1; i < headers.size(); ++i) {
    if (headers[i].empty()) continue;
    Column& column = columns.Of(headers[i]);
    for (std::int32_t row = 1; row <= modTable::BodyRows(table); ++row) {
      AddText(column, row, table.Text(row + 1, static_cast<std::int32_t>(i)));
    }
  }
}

Columns ColumnsFor(PowerPoint::Presentation& presentation) {
  Columns columns;
  modSlides::ForEachSlide(presentation, [&](PowerPoint::Slide& slide) {
    AddNamed(columns, slide);
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      if (shape->HasTable()) AddTable(columns, *shape->Table());
    });
  });
  for (const modRelink::Linked& link : modRelink::FindLinks(presentation, modSample::Number)) {
    if (!link.Column.empty()) columns.Of(link.Column);
  }
  if (!columns.All().empty()) return columns;
  constexpr std::array<std::pair<const char*, const char*>, 5> usual = {
      {{"Name", "Name 1"},
       {"Text", "1. A text of the length that a line of a board may have"},
       {"Number", "12"},
       {"Price", "4.80"},
       {"Time", "08:15"}}};
  for (const auto& [name, text] : usual) AddText(columns.Of(name), 1, text);
  return columns;
}

/// With the first of its numbers moved on; an hour stays one. What has three numbers is a date, or longer,
/// and stays as it is.
std::string MovedOn(const std::string& text, std::int32_t by) {
  const auto begin = std::find_if(text.begin(), text.end(), IsDigit);
  const auto end = std::find_if_not(begin, text.end(), IsDigit);
  std::size_t numbers = 0;
  for (auto at = begin; at != text.end(); ++numbers) {
    at = std::find_if(std::find_if_not(at, text.end(), IsDigit), text.end(), IsDigit);
  }
  constexpr std::int32_t HoursOfDay = 24;
  constexpr std::size_t MostDigits = 8;
  std::string digits(begin, end);
  if (numbers == 0 || numbers > 2 || digits.size() > MostDigits) return text;
  std::int32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  number += by;
  if (end != text.end() && *end == ':') number %= HoursOfDay;
  const std::string moved = std::to_string(number);
  const std::string zeros(digits.size() > moved.size() ? digits.size() - moved.size() : 0, '0');
  return std::string(text.begin(), begin) + zeros + moved + std::string(end, text.end());
}

std::string ValueOf(const Column& column, std::int32_t row) {
  if (column.Texts.empty()) return column.Name + " " + std::to_string(row);
  if (const auto own = column.Texts.find(row); own != column.Texts.end()) return own->second;
  const auto count = static_cast<std::int32_t>(column.Texts.size());
  return MovedOn(std::next(column.Texts.begin(), (row - 1) % count)->second, (row - 1) / count);
}

}  // namespace

host::TextTable MadeFor(PowerPoint::Presentation& presentation) {
  const Columns columns = ColumnsFor(presentation);
  std::vector<std::string> names;
  for (const Column& column : columns.All()) names.push_back(column.Name);
  // A byte behind each field parts it from the next.
  std::string text;
  std::vector<std::size_t> ends;
  for (std::size_t row = 1; row <= RowCount; ++row) {
    for (const Column& column : columns.All()) {
      text += ValueOf(column, static_cast<std::int32_t>(row));
      ends.push_back(text.size());
      text += '\n';
    }
  }
  host::Bytes bytes{std::make_unique<char[]>(text.size()), text.size()};
  std::copy(text.begin(), text.end(), bytes.data.get());
  host::TextTableBuilder builder(std::move(names), std::move(bytes));
  std::size_t start = 0;
  auto end = ends.begin();
  while (end != ends.end()) {
    builder.BeginRow(start);
    for (std::size_t i = 0; i < columns.All().size(); ++i) builder.AddField(*end++);
    builder.EndRow();
    start = *std::prev(end) + 1;
  }
  return builder.Finish();
}

}  // namespace LF2000::modSampleRows
