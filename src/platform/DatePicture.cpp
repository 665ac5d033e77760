// Patterns of strftime become pictures of basic::Format.

#include "platform/DatePicture.h"

#include <algorithm>
#include <cstddef>

namespace platform {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string symbolFor(char conversion) {
  switch (conversion) {
    case 'd':
      return "dd";
    case 'e':
      return "d";
    case 'm':
      return "mm";
    case 'B':
      return "mmmm";
    case 'b':
    case 'h':
      return "mmm";
    case 'A':
      return "dddd";
    case 'a':
      return "ddd";
    case 'Y':
      return "yyyy";
    case 'y':
      return "yy";
    case 'H':
    case 'I':
      return "hh";
    case 'k':
    case 'l':
      return "h";
    case 'M':
      return "nn";
    case 'S':
      return "ss";
    case 'p':
    case 'P':
      return "AMPM";
    case 'D':
      return picture("%m/%d/%y");
    case 'F':
      return picture("%Y-%m-%d");
    case 'R':
      return picture("%H:%M");
    case 'T':
      return picture("%H:%M:%S");
    case 'r':
      return picture("%I:%M:%S %p");
    case '%':
      return "%";
    default:
      return {};
  }
}

}  // namespace

std::string picture(std::string_view pattern) {
  std::string result;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    if (c != '%') {
      if (isLetter(c) || c == '"' || c == '\\') result += '\\';
      result += c;
      continue;
    }
    // Flags for padding, and E and O for a locale's other calendar and digits.
    bool unpadded = false;
    while (++i < pattern.size() && std::string_view("-_0^#EO").find(pattern[i]) != std::string_view::npos) {
      unpadded = unpadded || pattern[i] == '-';
    }
    if (i == pattern.size()) break;
    std::string symbol = symbolFor(pattern[i]);
    if (unpadded && symbol.size() == 2) symbol.pop_back();
    result += symbol;
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

std::string withoutSeconds(std::string picture) {
  const std::size_t seconds = picture.find("ss");
  if (seconds == std::string::npos) return picture;
  if (seconds > 0 && (picture[seconds - 1] == ':' || picture[seconds - 1] == '.')) {
    return picture.erase(seconds - 1, 3);
  }
  // The unit follows the number ("12 h 30 min 15 s").
  return picture.erase(seconds, std::min(picture.find(' ', seconds), picture.size()) - seconds);
}

std::string longDateFor(std::string_view shortDate) {
  const std::size_t day = shortDate.find('d');
  const std::size_t month = shortDate.find('m');
  const std::size_t year = shortDate.find('y');
  if (year < month) return "yyyy mmmm d, dddd";
  return month < day ? "dddd, mmmm d, yyyy" : "dddd, d mmmm yyyy";
}

}  // namespace platform
