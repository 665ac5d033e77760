// What delimits a text, and where its first record is, from a sample of it.

#include "connections/TextFileDialect.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "basic/Strings.h"
#include "connections/TextFileScanner.h"
#include "host/text_table.h"

namespace LF2000 {
namespace {

constexpr std::string_view Delimiters = "\t;,|";
constexpr std::size_t SampleRecords = 20;

/// The first records as they are split by a delimiter, without the doubling of quotes.
struct Sample {
  std::vector<std::size_t> begins;
  std::vector<RecordFields> records;
};

Sample SampleOf(std::string_view text, std::size_t begin, char delimiter) {
  Sample sample;
  TextFileScanner scanner(text, delimiter);
  std::size_t at = scanner.NextRecord(begin);
  while (at != text.size() && sample.records.size() < SampleRecords) {
    sample.begins.push_back(at);
    RecordFields& fields = sample.records.emplace_back();
    for (bool more = true; more;) {
      const TextFileField field = scanner.Field(at);
      // More are an error, whatever they hold.
      if (fields.size() <= host::TextTableBuilder::MaxColumns) {
        fields.push_back(field.Quoted ? text.substr(at + 1, field.ClosingQuote - at - 1)
                                      : text.substr(at, field.End - at));
      }
      more = !scanner.IsRecordEnd(field.End);
      at = field.End + (more ? 1 : 0);
    }
    at = scanner.NextRecord(at);
  }
  return sample;
}

/// How many records from the header on are split as it is. One empty field behind the last does not count.
std::size_t CountFitting(const Sample& sample, std::size_t header) {
  const RecordFields& first = sample.records[header];
  const std::size_t width = first.size() - (FilledFields(first) < first.size() ? 1 : 0);
  return static_cast<std::size_t>(std::count_if(sample.records.begin() + static_cast<std::ptrdiff_t>(header),
                                                sample.records.end(), [&](const RecordFields& each) {
                                                  return each.size() == first.size() ||
                                                         each.size() == width ||
                                                         (each.size() == width + 1 && each.back().empty());
                                                }));
}

bool SplitsMostly(const Sample& sample) {
  const auto split = std::count_if(sample.records.begin(), sample.records.end(),
                                   [](const RecordFields& each) { return each.size() > 1; });
  return 2 * static_cast<std::size_t>(split) >= sample.records.size();
}

struct Declared {
  char delimiter;
  std::size_t behind;
};

/// A first line that says what delimits: "sep=;".
std::optional<Declared> DeclaredDelimiter(std::string_view text) {
  constexpr std::string_view Key = "SEP=";
  TextFileScanner lines(text, NoDelimiter);
  const std::size_t begin = lines.NextRecord(0);
  if (begin == text.size()) return std::nullopt;
  const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
  std::string_view line = text.substr(begin, end - begin);
  if (line.size() > 2 && line.front() == '"' && line.back() == '"') line = line.substr(1, line.size() - 2);
  if (line.size() != Key.size() + 1 || basic::UCase(line.substr(0, Key.size())) != Key) return std::nullopt;
  const char delimiter = line.back();
  const bool isSign = delimiter == '\t' || (delimiter >= ' ' && delimiter < '0' && delimiter != '"') ||
                      (delimiter > '9' && delimiter < 'A') || delimiter == '|' || delimiter == '^' ||
                      delimiter == '~';
  return isSign ? std::optional(Declared{delimiter, end}) : std::nullopt;
}

TextFileDialect At(const Sample& sample, std::size_t header, char delimiter) {
  return {delimiter, sample.begins[header], header > 0, {}};
}

/// Where the first line has one field and all others have the same number, over one, under a delimiter.
std::string DoubtOf(const Sample& sample, char delimiter) {
  const std::vector<RecordFields>& records = sample.records;
  if (records.size() < 2 || records[0].size() != 1) return {};
  const std::size_t fields = records[1].size();
  const bool areAlike = std::all_of(records.begin() + 1, records.end(),
                                    [&](const RecordFields& each) { return each.size() == fields; });
  // Sentences have a comma each quite often.
  if (!areAlike || fields < (delimiter == ',' ? std::size_t{3} : std::size_t{2})) return {};
  const std::string sign = delimiter == '\t' ? "TABs" : std::string("'") + delimiter + "'";
  return "The first line has one column, but the lines below have " + std::to_string(fields) +
         ", separated by " + sign + ": the first line is separated by something else, or is no header.";
}

}  // namespace

TextFileDialect FindDialect(std::string_view text, bool firstRowFieldNames) {
  if (const auto declared = DeclaredDelimiter(text)) {
    const Sample sample = SampleOf(text, declared->behind, declared->delimiter);
    if (sample.records.empty()) return {declared->delimiter, text.size(), false, {}};
    return At(sample, firstRowFieldNames ? HeaderRow(sample.records) : 0, declared->delimiter);
  }
  std::optional<TextFileDialect> behindTitles;
  std::optional<TextFileDialect> fallback;
  std::string doubt;
  for (const char delimiter : Delimiters) {
    const Sample sample = SampleOf(text, 0, delimiter);
    if (sample.records.empty()) continue;
    const std::size_t header = firstRowFieldNames ? HeaderRow(sample.records) : 0;
    if (doubt.empty()) doubt = DoubtOf(sample, delimiter);
    if (sample.records[header].size() == 1) continue;
    const std::size_t records = sample.records.size() - header;
    const std::size_t fitting = CountFitting(sample, header);
    if (header == 0) {
      if (fitting == records) return At(sample, 0, delimiter);
      if (!fallback && SplitsMostly(sample)) fallback = At(sample, 0, delimiter);
    } else if (!behindTitles && 2 * fitting > records) {
      behindTitles = At(sample, header, delimiter);
    }
  }
  if (behindTitles) return *behindTitles;
  if (fallback) return *fallback;
  return {NoDelimiter, 0, false, std::move(doubt)};
}

std::vector<RecordFields> FirstRecords(std::string_view text, const TextFileDialect& dialect) {
  return SampleOf(text, dialect.Begin, dialect.Delimiter).records;
}

}  // namespace LF2000
