// Patterns of Unicode's locale data become pictures of basic::Format.

#include "platform/DatePicture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "basic/Strings.h"

namespace platform {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// What stands for a letter that is repeated so often.
std::string symbolFor(char letter, std::size_t count) {
  const auto oneOrTwo = [count](char symbol) { return std::string(std::min<std::size_t>(count, 2), symbol); };
  switch (letter) {
    case 'd':
      return oneOrTwo('d');
    case 'M':
    case 'L':
      return std::string(std::min<std::size_t>(count, 4), 'm');
    case 'y':
    case 'u':
      return "yyyy";
    case 'E':
    case 'c':
      return count < 4 ? "ddd" : "dddd";
    case 'H':
    case 'h':
    case 'K':
    case 'k':
      return oneOrTwo('h');
    case 'm':
      return oneOrTwo('n');
    case 's':
      return oneOrTwo('s');
    case 'a':
    case 'b':
    case 'B':
      return "AMPM";
    default:
      return {};
  }
}

/// Spaces of all widths as blanks; without marks of writing direction.
std::string withPlainSpaces(std::string_view pattern) {
  constexpr std::array<std::pair<const char*, const char*>, 4> Plain = {
      {{"\u00A0", " "}, {"\u202F", " "}, {"\u200E", ""}, {"\u200F", ""}}};
  std::string text(pattern);
  for (const auto& [special, plain] : Plain) text = basic::Replace(text, special, plain);
  return text;
}

}  // namespace

std::string picture(std::string_view original) {
  const std::string pattern = withPlainSpaces(original);
  std::string result;
  const auto addLiteral = [&result](char c) {
    if (isLetter(c) || c == '"' || c == '\\') result += '\\';
    result += c;
  };
  bool isQuoted = false;
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    if (c == '\'') {
      // Doubled it stands for itself, in quotes or not.
      const bool isDoubled = i + 1 < pattern.size() && pattern[i + 1] == '\'';
      if (isDoubled) addLiteral(c);
      isQuoted = isQuoted != !isDoubled;
      i += isDoubled ? 2 : 1;
    } else if (isQuoted || !isLetter(c)) {
      addLiteral(c);
      ++i;
    } else {
      const std::size_t end = std::min(pattern.find_first_not_of(c, i), pattern.size());
      const std::string symbol = symbolFor(c, end - i);
      result += symbol;
      i = end;
      // One blank is enough where something is left out between two.
      if (symbol.empty() && result.ends_with(' ') && i < pattern.size() && pattern[i] == ' ') ++i;
    }
  }
  const std::size_t first = result.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return result.substr(first, result.find_last_not_of(' ') - first + 1);
}

std::string separatorOf(std::string_view picture, std::string_view otherwise) {
  const auto first = std::find_if(picture.begin(), picture.end(), isLetter);
  const auto begin = std::find_if_not(first, picture.end(), isLetter);
  const auto end = std::find_if(begin, picture.end(), isLetter);
  if (begin == end || end == picture.end()) return std::string(otherwise);
  return {begin, end};
}

}  // namespace platform
