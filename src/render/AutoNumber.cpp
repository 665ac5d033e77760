#include "render/TextReader.h"

namespace render {

namespace {

std::string roman(int number) {
  static constexpr struct {
    int value;
    const char* text;
  } parts[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
               {40, "xl"},  {10, "x"},   {9, "ix"},  {5, "v"},    {4, "iv"},  {1, "i"}};
  std::string text;
  for (const auto& [value, letters] : parts) {
    for (; number >= value; number -= value) text += letters;
  }
  return text;
}

/// a to z, then aa, bb, ...
std::string letters(int number) {
  return std::string(static_cast<std::size_t>((number - 1) / 26 + 1),
                     static_cast<char>('a' + (number - 1) % 26));
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(c - 32);
  return text;
}

std::string circled(int number) {
  if (number > 20) return std::to_string(number);
  const auto low = static_cast<char>(0xA0 + number - 1);
  return std::string("\xE2\x91") + low;
}

}  // namespace

std::string autoNumber(std::string_view scheme, int number) {
  std::string digits;
  if (scheme.starts_with("alphaLc")) {
    digits = letters(number);
  } else if (scheme.starts_with("alphaUc")) {
    digits = upper(letters(number));
  } else if (scheme.starts_with("romanLc")) {
    digits = roman(number);
  } else if (scheme.starts_with("romanUc")) {
    digits = upper(roman(number));
  } else if (scheme.starts_with("circleNum")) {
    return circled(number);
  } else {
    digits = std::to_string(number);
  }
  if (scheme.ends_with("ParenBoth")) return "(" + digits + ")";
  if (scheme.ends_with("ParenR")) return digits + ")";
  if (scheme.ends_with("Period")) return digits + ".";
  if (scheme.ends_with("Minus")) return "-" + digits;
  return digits;
}

}  // namespace render
