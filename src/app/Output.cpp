#include "app/Output.h"

#include <algorithm>
#include <ostream>

#include "basic/Strings.h"

namespace app {

std::string oneLine(const std::string& text) {
  constexpr std::size_t LongestText = 60;
  std::string line;
  for (const char c : text) {
    if (c == '\r' || c == '\n' || c == '\v') {
      line += "\u21B5";
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      line += "\u00B7";
    } else {
      line += c;
    }
  }
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

}  // namespace app
