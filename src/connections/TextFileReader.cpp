#include "connections/TextFileReader.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/TextFileColumns.h"
#include "connections/TextFileDialect.h"
#include "connections/TextFileEncoding.h"
#include "connections/TextFileScanner.h"

namespace LF2000 {
namespace {

using host::TextTableBuilder;

constexpr std::ptrdiff_t MaxCharacters = 4000;

/// CR LF is one.
std::size_t CountLineEnds(const char* begin, const char* end) {
  std::size_t count = 0;
  for (const char* at = begin; at != end; ++at) {
    if (*at == '\n' || (*at == '\r' && (at + 1 == end || at[1] != '\n'))) ++count;
  }
  return count;
}

/// Turns a quoted field into its content where it stands.
void Unquote(char* opening, char* closing, char* end) {
  *opening = TextTableBuilder::Filler;
  char* out = closing;
  if (const auto length = static_cast<std::size_t>(closing - opening - 1);
      std::memchr(opening + 1, '"', length) != nullptr) {
    out = opening + 1;
    for (const char* at = opening + 1; at != closing; ++at) {
      *out++ = *at;
      if (*at == '"') ++at;
    }
  }
  const auto appended = static_cast<std::size_t>(end - closing - 1);
  std::memmove(out, closing + 1, appended);
  std::fill(out + appended, end, TextTableBuilder::Filler);
}

class RecordReader {
 public:
  explicit RecordReader(TextFileContent content) : content_(std::move(content)) {
    text_ = content_.Bytes.data.get();
    end_ = text_ + content_.Bytes.size;
    at_ = SkipEmptyLines(text_ + content_.Begin);
    delimiter_ = FindDelimiter({at_, static_cast<std::size_t>(end_ - at_)});
  }

  host::TextTable Read(bool firstRowFieldNames, const std::function<void(std::string_view)>& report) {
    std::vector<std::string> columns = firstRowFieldNames ? ReadNames() : GenerateNames();
    columnCount_ = columns.size();
    TextTableBuilder builder(std::move(columns), std::move(content_.Bytes));
    for (; at_ != end_; at_ = SkipEmptyLines(at_)) ReadRow(builder);
    if (dropped_ != 0 && report) {
      report(std::to_string(dropped_) + " fields beyond the " + std::to_string(columnCount_) +
             " columns were dropped, the first of them on line " + std::to_string(firstDroppedLine_) + ".");
    }
    return builder.Finish();
  }

 private:
  char* SkipEmptyLines(char* at) { return at + (SkipLineEnds(at, end_) - at); }

  std::vector<std::string> ReadNames() {
    if (at_ == end_) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource,
                         "The file is empty: it has no first line with the column names.");
    }
    std::vector<std::string> names;
    for (bool more = true; more;) {
      const char* const begin = at_;
      more = ReadField();
      std::string name(begin, static_cast<std::size_t>(at_ - begin));
      std::erase(name, TextTableBuilder::Filler);
      names.push_back(std::move(name));
      if (more) ++at_;
    }
    CheckColumnNames(names);
    at_ = SkipEmptyLines(at_);
    return names;
  }

  [[nodiscard]] std::vector<std::string> GenerateNames() const {
    return GeneratedColumnNames(at_ == end_ ? 1 : ScanRecord(at_, end_, delimiter_).FieldCount);
  }

  void ReadRow(TextTableBuilder& builder) {
    const char* const row = at_;
    const std::size_t lineEndsCutBefore = lineEndsCut_;
    builder.BeginRow(static_cast<std::size_t>(row - text_));
    std::size_t fields = 0;
    for (bool more = true; more; ++fields) {
      more = ReadField();
      if (fields < columnCount_) builder.AddField(static_cast<std::size_t>(at_ - text_));
      if (more) ++at_;
    }
    builder.EndRow();
    if (fields > columnCount_) {
      if (dropped_ == 0) firstDroppedLine_ = CountLineEnds(text_, row) + lineEndsCutBefore + 1;
      dropped_ += fields - columnCount_;
    }
  }

  /// Brings the field at `at_` into its final form and goes to its end; says
  /// whether another follows in the record.
  bool ReadField() {
    char* const begin = at_;
    const TextFileField field = ScanField(begin, end_, delimiter_);
    at_ = begin + (field.End - begin);
    if (field.ClosingQuote != nullptr) Unquote(begin, begin + (field.ClosingQuote - begin), at_);
    if (at_ - begin > MaxCharacters) Cut(begin);
    return at_ != end_ && !IsLineEnd(*at_);
  }

  void Cut(char* begin) {
    if (*begin == TextTableBuilder::Filler) ++begin;
    const std::string_view value(begin, static_cast<std::size_t>(at_ - begin));
    char* const cut = begin + basic::Left(value, MaxCharacters).size();
    lineEndsCut_ += CountLineEnds(cut, at_);
    std::fill(cut, at_, TextTableBuilder::Filler);
  }

  TextFileContent content_;
  char* text_ = nullptr;
  char* end_ = nullptr;
  char* at_ = nullptr;
  char delimiter_ = NoDelimiter;
  std::size_t columnCount_ = 0;
  std::size_t lineEndsCut_ = 0;
  std::size_t dropped_ = 0;
  std::size_t firstDroppedLine_ = 0;
};

}  // namespace

host::TextTable ReadTextFile(host::Bytes bytes, bool firstRowFieldNames,
                             const std::function<void(std::string_view)>& report) {
  return RecordReader(DecodeTextFile(std::move(bytes))).Read(firstRowFieldNames, report);
}

}  // namespace LF2000
