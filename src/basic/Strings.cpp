#include "basic/Strings.h"

#include <algorithm>

namespace basic {
namespace {

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::string UCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = upper(c);
  return result;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return upper(x) == upper(y); });
}

bool StartsWith(std::string_view text, std::string_view prefix) { return text.starts_with(prefix); }

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  pieces.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), separator)) + 1);
  for (std::size_t begin = 0;;) {
    const std::size_t end = text.find(separator, begin);
    pieces.emplace_back(text.substr(begin, end - begin));
    if (end == std::string_view::npos) return pieces;
    begin = end + 1;
  }
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(text);
  std::string result;
  result.reserve(text.size());
  for (std::size_t begin = 0;;) {
    const std::size_t found = text.find(what, begin);
    result += text.substr(begin, found - begin);
    if (found == std::string_view::npos) return result;
    result += with;
    begin = found + what.size();
  }
}

}  // namespace basic
