// What delimits a text, and where its first record is, from a sample of it.

#include "connections/TextFileDialect.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <vector>

#include "basic/Strings.h"
#include "connections/TextFileScanner.h"

namespace LF2000 {
namespace {

constexpr std::string_view Delimiters = "\t;,|";
constexpr std::size_t SampleRecords = 20;

struct SampleRecord {
  std::size_t begin = 0;
  std::size_t fields = 0;
  /// Without empty ones at the end: spreadsheet programs fill up all lines to the same length.
  std::size_t filled = 0;
};
using Sample = std::vector<SampleRecord>;

/// Visits the fields of a record with their content, but for doubled quotes in it.
template <class Visit>
std::size_t ForEachField(TextFileScanner& scanner, std::string_view text, std::size_t at, Visit visit) {
  for (;;) {
    const TextFileField field = scanner.Field(at);
    visit(field.Quoted ? text.substr(at + 1, field.ClosingQuote - at - 1) : text.substr(at, field.End - at));
    if (scanner.IsRecordEnd(field.End)) return field.End;
    at = field.End + 1;
  }
}

Sample SampleOf(std::string_view text, std::size_t begin, char delimiter) {
  Sample sample;
  TextFileScanner scanner(text, delimiter);
  std::size_t at = scanner.NextRecord(begin);
  while (at != text.size() && sample.size() < SampleRecords) {
    SampleRecord& record = sample.emplace_back(SampleRecord{at});
    const std::size_t end = ForEachField(scanner, text, at, [&](std::string_view field) {
      ++record.fields;
      if (!field.empty()) record.filled = record.fields;
    });
    at = scanner.NextRecord(end);
  }
  return sample;
}

bool LooksLikeNames(std::string_view text, const SampleRecord& record, char delimiter) {
  std::unordered_set<std::string> names;
  bool looks = true;
  std::size_t position = 0;
  TextFileScanner scanner(text, delimiter);
  ForEachField(scanner, text, record.begin, [&](std::string_view field) {
    if (++position > record.filled) return;
    const std::size_t first = field.find_first_not_of("+-.");
    looks = looks && first != std::string_view::npos && field.front() != ' ' &&
            (field[first] < '0' || field[first] > '9') && names.insert(basic::UCase(field)).second;
  });
  return looks;
}

/// Which record holds the names.
std::size_t HeaderOf(std::string_view text, const Sample& sample, char delimiter) {
  std::size_t header = 0;
  const auto isAsWideAsMost = [&](std::size_t index) {
    const auto behind = sample.begin() + static_cast<std::ptrdiff_t>(index) + 1;
    const auto fitting = std::count_if(behind, sample.end(),
                                       [&](const auto& each) { return each.filled <= sample[index].filled; });
    return behind == sample.end() || 2 * fitting > sample.end() - behind;
  };
  while (header < sample.size() && !isAsWideAsMost(header)) ++header;
  if (header == 0 || header == sample.size()) return 0;

  const std::size_t width = sample[header].filled;
  const bool isAlone = header + 1 == sample.size();
  // Two words behind a line are as likely a sentence with a comma in it.
  if (width < (isAlone ? std::size_t{3} : std::size_t{2})) return 0;
  const auto end = sample.begin() + static_cast<std::ptrdiff_t>(header);
  const bool areTitles =
      std::all_of(sample.begin(), end, [&](const auto& each) { return 2 * each.filled <= width; });
  return areTitles && LooksLikeNames(text, sample[header], delimiter) ? header : 0;
}

/// How many records from the header on are split as it is. One empty field behind the last does not count.
std::size_t CountFitting(const Sample& sample, std::size_t header) {
  const SampleRecord& first = sample[header];
  const std::size_t width = first.fields - (first.filled < first.fields ? 1 : 0);
  return static_cast<std::size_t>(std::count_if(
      sample.begin() + static_cast<std::ptrdiff_t>(header), sample.end(), [&](const auto& each) {
        return each.fields == first.fields || each.fields == width ||
               (each.fields == width + 1 && each.filled <= width);
      }));
}

bool SplitsMostly(const Sample& sample) {
  const auto split =
      std::count_if(sample.begin(), sample.end(), [](const auto& each) { return each.fields > 1; });
  return 2 * static_cast<std::size_t>(split) >= sample.size();
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
  return {delimiter, sample[header].begin, header > 0, {}};
}

/// Where the first line has one field and all others have the same number, over one, under a delimiter.
std::string DoubtOf(const Sample& sample, char delimiter) {
  if (sample.size() < 2 || sample[0].fields != 1) return {};
  const std::size_t fields = sample[1].fields;
  const bool areAlike =
      std::all_of(sample.begin() + 1, sample.end(), [&](const auto& each) { return each.fields == fields; });
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
    if (sample.empty()) return {declared->delimiter, text.size(), false, {}};
    return At(sample, firstRowFieldNames ? HeaderOf(text, sample, declared->delimiter) : 0,
              declared->delimiter);
  }
  std::optional<TextFileDialect> behindTitles;
  std::optional<TextFileDialect> fallback;
  std::string doubt;
  for (const char delimiter : Delimiters) {
    const Sample sample = SampleOf(text, 0, delimiter);
    if (sample.empty()) continue;
    const std::size_t header = firstRowFieldNames ? HeaderOf(text, sample, delimiter) : 0;
    if (doubt.empty()) doubt = DoubtOf(sample, delimiter);
    if (sample[header].fields == 1) continue;
    const std::size_t records = sample.size() - header;
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

}  // namespace LF2000
