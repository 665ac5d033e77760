#include "connections/TextFileDialect.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "connections/TextFileScanner.h"

namespace LF2000 {
namespace {

constexpr std::string_view Delimiters = "\t;,|";
constexpr std::size_t SampleRecords = 20;

/// Number of fields of each of the first records.
std::vector<std::size_t> FieldCounts(std::string_view text, char delimiter) {
  std::vector<std::size_t> counts;
  TextFileScanner scanner(text, delimiter);
  std::size_t at = scanner.SkipLineEnds(0);
  while (at != text.size() && counts.size() < SampleRecords) {
    const TextFileRecord record = scanner.Record(at);
    counts.push_back(record.FieldCount);
    at = scanner.SkipLineEnds(record.End);
  }
  return counts;
}

bool SplitsEvenly(const std::vector<std::size_t>& counts) {
  return std::all_of(counts.begin(), counts.end(),
                     [&](std::size_t count) { return count == counts.front(); });
}

bool SplitsMostly(const std::vector<std::size_t>& counts) {
  const auto split = std::count_if(counts.begin(), counts.end(), [](std::size_t count) { return count > 1; });
  return 2 * static_cast<std::size_t>(split) >= counts.size();
}

}  // namespace

char FindDelimiter(std::string_view text) {
  char fallback = NoDelimiter;
  for (const char delimiter : Delimiters) {
    const std::vector<std::size_t> counts = FieldCounts(text, delimiter);
    if (counts.empty() || counts.front() == 1) continue;
    if (SplitsEvenly(counts)) return delimiter;
    if (fallback == NoDelimiter && SplitsMostly(counts)) fallback = delimiter;
  }
  return fallback;
}

}  // namespace LF2000
