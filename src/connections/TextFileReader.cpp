// Records become a table: fields are found, unquoted and cut in the buffer that the file was read into.

#include "connections/TextFileReader.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/TextFileColumns.h"
#include "connections/TextFileDialect.h"
#include "connections/TextFileEncoding.h"
#include "connections/TextFileKind.h"
#include "connections/TextFileScanner.h"

namespace LF2000 {
namespace {

using host::TextTableBuilder;

constexpr std::size_t MaxCharacters = 4000;

/// CR LF is one.
std::size_t CountLineEnds(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at != text.size(); ++at) {
    if (text[at] == '\n' || (text[at] == '\r' && !text.substr(at + 1).starts_with('\n'))) ++count;
  }
  return count;
}

/// Turns a quoted field into its content where it stands.
void Unquote(char* text, std::size_t opening, const TextFileField& field) {
  text[opening] = TextTableBuilder::Filler;
  std::size_t out = field.ClosingQuote;
  if (field.Doubled) {
    out = opening + 1;
    for (std::size_t at = opening + 1; at != field.ClosingQuote; ++at) {
      text[out++] = text[at];
      if (text[at] == '"') ++at;
    }
  }
  for (std::size_t at = field.ClosingQuote + 1; at != field.End; ++at) text[out++] = text[at];
  std::fill(text + out, text + field.End, TextTableBuilder::Filler);
}

class RecordReader {
 public:
  RecordReader(TextFileContent content, bool firstRowFieldNames)
      : content_(std::move(content)),
        text_(content_.Bytes.data.get()),
        firstRowFieldNames_(firstRowFieldNames),
        dialect_(
            FindDialect({text_ + content_.Begin, content_.Bytes.size - content_.Begin}, firstRowFieldNames)),
        at_(content_.Begin + dialect_.Begin),
        scanner_({text_, content_.Bytes.size}, dialect_.Delimiter) {
    NextRecord();
  }

  host::TextTable Read(const std::function<void(std::string_view)>& report) {
    if (dialect_.HasTitles && report) report(TitlesPassedOver());
    if (!dialect_.Doubt.empty() && report) report(dialect_.Doubt);
    std::vector<std::string> columns = firstRowFieldNames_ ? ReadNames() : GenerateNames();
    columnCount_ = columns.size();
    const std::size_t size = content_.Bytes.size;
    TextTableBuilder builder(std::move(columns), std::move(content_.Bytes));
    for (; at_ != size; NextRecord()) ReadRow(builder);
    if (dropped_ != 0 && report) report(DroppedFields());
    return builder.Finish();
  }

 private:
  void NextRecord() { at_ = scanner_.NextRecord(at_); }

  [[nodiscard]] std::string TitlesPassedOver() const {
    return "The column names are on line " + std::to_string(CountLineEnds({text_, at_}) + 1) +
           "; what stands above them is passed over as titles.";
  }

  std::vector<std::string> ReadNames() {
    if (at_ == content_.Bytes.size) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource,
                         "The file is empty: it has no first line with the column names.");
    }
    std::vector<std::string> names;
    for (bool more = true; more;) {
      const std::size_t begin = at_;
      more = ReadField();
      std::string name(text_ + begin, at_ - begin);
      std::erase(name, TextTableBuilder::Filler);
      names.push_back(std::move(name));
      if (more) ++at_;
    }
    // Lines often end with a delimiter, or are filled up with them.
    while (names.size() > 1 && names.back().empty()) names.pop_back();
    CheckColumnNames(names);
    NextRecord();
    return names;
  }

  std::vector<std::string> GenerateNames() {
    return GeneratedColumnNames(at_ == content_.Bytes.size ? 1 : scanner_.Record(at_).FieldCount);
  }

  void ReadRow(TextTableBuilder& builder) {
    const std::size_t row = at_;
    const std::size_t lineEndsCutBefore = lineEndsCut_;
    builder.BeginRow(row);
    std::size_t fields = 0;
    std::size_t dropped = 0;
    for (bool more = true; more; ++fields) {
      const std::size_t begin = at_;
      more = ReadField();
      if (fields < columnCount_) {
        builder.AddField(at_);
      } else if (HoldsText(begin)) {
        ++dropped;
      }
      if (more) ++at_;
    }
    builder.EndRow();
    if (dropped > 0) {
      if (dropped_ == 0) firstDroppedLine_ = CountLineEnds({text_, row}) + lineEndsCutBefore + 1;
      dropped_ += dropped;
    }
  }

  /// Whether the field from `begin` to `at_` does.
  [[nodiscard]] bool HoldsText(std::size_t begin) const {
    return std::any_of(text_ + begin, text_ + at_, [](char c) { return c != TextTableBuilder::Filler; });
  }

  [[nodiscard]] std::string DroppedFields() const {
    const std::string columns = " beyond the " + std::to_string(columnCount_) + " columns ";
    const std::string line = "on line " + std::to_string(firstDroppedLine_) + ".";
    if (dropped_ == 1) return "1 field" + columns + "was dropped, " + line;
    return std::to_string(dropped_) + " fields" + columns + "were dropped, the first of them " + line;
  }

  /// Brings the field at `at_` into its final form and goes to its end; says
  /// whether another follows in the record.
  bool ReadField() {
    const std::size_t begin = at_;
    const TextFileField field = scanner_.Field(begin);
    at_ = field.End;
    if (field.Quoted) Unquote(text_, begin, field);
    if (at_ - begin > MaxCharacters) Cut(begin);
    return !scanner_.IsRecordEnd(at_);
  }

  void Cut(std::size_t begin) {
    if (text_[begin] == TextTableBuilder::Filler) ++begin;
    const std::size_t cut = begin + basic::Left({text_ + begin, at_ - begin}, MaxCharacters).size();
    lineEndsCut_ += CountLineEnds({text_ + cut, at_ - cut});
    std::fill(text_ + cut, text_ + at_, TextTableBuilder::Filler);
  }

  TextFileContent content_;
  char* text_;
  bool firstRowFieldNames_;
  TextFileDialect dialect_;
  std::size_t at_;
  TextFileScanner scanner_;
  std::size_t columnCount_ = 0;
  std::size_t lineEndsCut_ = 0;
  std::size_t dropped_ = 0;
  std::size_t firstDroppedLine_ = 0;
};

/// A second line of names under the first would be shown as values.
void RequireOneHeader(const host::TextTable& table) {
  const std::vector<std::string>& names = table.columns();
  // One column may well hold its own name.
  if (names.size() < 2 || table.rowCount() == 0) return;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (table.field(0, i) != std::string_view(names[i])) return;
  }
  throw basic::Error(basic::AdapterError, basic::DefaultSource,
                     "The line of the column names stands twice, one below the other.");
}

}  // namespace

host::TextTable ReadTextFile(host::Bytes bytes, bool firstRowFieldNames,
                             const std::function<void(std::string_view)>& report) {
  RequireText({bytes.data.get(), bytes.size});
  host::TextTable table = RecordReader(DecodeTextFile(std::move(bytes)), firstRowFieldNames).Read(report);
  if (firstRowFieldNames) RequireOneHeader(table);
  return table;
}

}  // namespace LF2000
