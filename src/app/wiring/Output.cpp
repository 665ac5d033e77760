#include "app/wiring/Output.h"

#include <algorithm>
#include <ostream>

#include "basic/Strings.h"
#include "json/Json.h"
#include "platform/Console.h"

namespace app {

std::string oneLine(const std::string& text) {
  constexpr std::size_t LongestText = 60;
  std::string line = basic::Replace(platform::forTerminal(basic::Replace(text, "\v", "\n")), "\n", "\u21B5");
  if (basic::Len(line) > LongestText) return std::string(basic::Left(line, LongestText - 1)) + "\u2026";
  return line;
}

void printTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths(header.size());
  const auto measure = [&](const std::vector<std::string>& row) {
    for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i) {
      widths[i] = std::max(widths[i], basic::Len(row[i]));
    }
  };
  measure(header);
  for (const auto& row : rows) measure(row);

  const auto print = [&](const std::vector<std::string>& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - basic::Len(row[i]) + 2, ' ');
    }
    out << line << '\n';
  };
  print(header);
  for (const auto& row : rows) print(row);
}

void printJson(std::ostream& out, const json::Json& json) { out << json::textOf(json, 2) << '\n'; }

std::string joinedLines(const std::string& text) {
  return basic::Replace(basic::Replace(text, " \r\n", " "), "\r\n", " ");
}

}  // namespace app
