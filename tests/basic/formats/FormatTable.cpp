// Compares what number formats show with a table of other programs' answers.
// Reads lines "format TAB value TAB text" (the value in JSON), prints the ones
// that differ with the text shown here, and the count. Lines without a tab are headings.

#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>

#include "basic/numberformat/NumberFormat.h"

namespace {

std::string shown(const std::string& code, const nlohmann::json& value) {
  const basic::NumberFormat format(code);
  const basic::Locale american;
  if (value.is_boolean()) return FormatNumber(format, value.get<bool>(), american);
  if (value.is_number()) return FormatNumber(format, value.get<double>(), american);
  const auto text = value.get<std::string>();
  return FormatNumber(format, std::string_view(text), american);
}

}  // namespace

int main() {
  std::size_t cases = 0;
  std::size_t different = 0;
  for (std::string line; std::getline(std::cin, line);) {
    const std::size_t first = line.find('\t');
    if (first == std::string::npos) continue;
    ++cases;
    const std::size_t second = line.find('\t', first + 1);
    const std::string code = line.substr(0, first);
    const std::string here = shown(code, nlohmann::json::parse(line.substr(first + 1, second - first - 1)));
    if (here == line.substr(second + 1)) continue;
    ++different;
    std::cout << line << '\t' << here << '\n';
  }
  std::cout << cases - different << " of " << cases << " agree\n";
  return different == 0 && cases != 0 ? 0 : 1;
}
