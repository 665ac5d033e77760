
#include "basic/Utf8.h"
#include "render/text/TextReader.h"

// Numbers as lists count: in letters, Roman, in the digits and words of other scripts.

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

/// The letters of an alphabet in turn, then each doubled, and so on: a to z, aa, bb, ...
std::string letters(std::u32string_view alphabet, int number) {
  const auto size = static_cast<int>(alphabet.size());
  std::string text;
  for (int i = 0; i <= (number - 1) / size; ++i)
    basic::AppendUtf8(text, alphabet[static_cast<std::size_t>((number - 1) % size)]);
  return text;
}

/// Decimal with the digits of another script, `zero` being its nought.
std::string digits(char32_t zero, int number) {
  std::string text;
  for (const char digit : std::to_string(number))
    basic::AppendUtf8(text, zero + static_cast<char32_t>(digit - '0'));
  return text;
}

/// As it is spoken in Chinese: 12 is "ten two", 20 "two ten".
std::string chinese(int number) {
  static constexpr const char* ones[] = {"", "一", "二", "三", "四", "五", "六", "七", "八", "九"};
  static constexpr struct {
    int value;
    const char* text;
  } units[] = {{10000, "万"}, {1000, "千"}, {100, "百"}, {10, "十"}};
  std::string text;
  bool skipped = false;
  for (const auto& [value, unit] : units) {
    const int count = number / value;
    number %= value;
    if (count == 0) {
      skipped = !text.empty();
      continue;
    }
    if (skipped && !text.empty()) text += "〇";
    skipped = false;
    if (value != 10 || count > 1 || !text.empty()) text += ones[count % 10];
    text += unit;
  }
  if (number > 0) {
    if (skipped) text += "〇";
    text += ones[number];
  }
  return text;
}

/// Hebrew numerals by addition, without the two that would spell a holy name.
std::string hebrew(int number) {
  static constexpr struct {
    int value;
    const char* text;
  } parts[] = {{400, "ת"}, {300, "ש"}, {200, "ר"}, {100, "ק"}, {90, "צ"},  {80, "פ"},  {70, "ע"}, {60, "ס"},
               {50, "נ"},  {40, "מ"},  {30, "ל"},  {20, "כ"},  {16, "טז"}, {15, "טו"}, {10, "י"}, {9, "ט"},
               {8, "ח"},   {7, "ז"},   {6, "ו"},   {5, "ה"},   {4, "ד"},   {3, "ג"},   {2, "ב"},  {1, "א"}};
  std::string text;
  for (const auto& [value, letter] : parts) {
    for (; number >= value; number -= value) text += letter;
  }
  return text;
}

std::string circled(int number, bool isBlack) {
  if (number > 20) return std::to_string(number);
  const auto offset = static_cast<char32_t>(number - 1);
  std::string text;
  basic::AppendUtf8(text, !isBlack ? 0x2460 + offset : number <= 10 ? 0x2776 + offset : 0x24EB + offset - 10);
  return text;
}

constexpr std::u32string_view Lower = U"abcdefghijklmnopqrstuvwxyz";
constexpr std::u32string_view Upper = U"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::u32string_view Thai = U"กขคฆงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟภมยรลวศษสหฬอฮ";
constexpr std::u32string_view HindiVowels = U"अआइईउऊऋएऐओऔ";
constexpr std::u32string_view HindiConsonants = U"कखगघङचछजझञटठडढणतथदधनपफबभमयरलवशषसह";
constexpr std::u32string_view Arabic = U"أبتثجحخدذرزسشصضطظعغفقكلمنهوي";
constexpr std::u32string_view Abjad = U"أبجدهوزحطيكلمنسعفصقرشتثخذضظغ";

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(c - 32);
  return text;
}

std::string counted(std::string_view scheme, int number) {
  if (scheme.starts_with("alphaLc")) return letters(Lower, number);
  if (scheme.starts_with("alphaUc")) return letters(Upper, number);
  if (scheme.starts_with("romanLc")) return roman(number);
  if (scheme.starts_with("romanUc")) return upper(roman(number));
  if (scheme.starts_with("circleNum")) return circled(number, scheme == "circleNumWdBlackPlain");
  if (scheme.starts_with("arabicDb")) return digits(0xFF10, number);
  if (scheme.starts_with("arabic1")) return letters(Arabic, number);
  if (scheme.starts_with("arabic2")) return letters(Abjad, number);
  if (scheme.starts_with("hebrew2")) return hebrew(number);
  if (scheme.starts_with("ea1")) return chinese(number);
  if (scheme.starts_with("thaiAlpha")) return letters(Thai, number);
  if (scheme.starts_with("thaiNum")) return digits(0x0E50, number);
  if (scheme.starts_with("hindiAlpha1")) return letters(HindiConsonants, number);
  if (scheme.starts_with("hindiAlpha")) return letters(HindiVowels, number);
  if (scheme.starts_with("hindiNum")) return digits(0x0966, number);
  return std::to_string(number);
}

}  // namespace

std::string autoNumber(std::string_view scheme, int number) {
  auto text = counted(scheme, number);
  if (scheme.ends_with("ParenBoth")) return "(" + text + ")";
  if (scheme.ends_with("ParenR")) return text + ")";
  if (scheme.ends_with("DbPeriod")) return text + "．";
  if (scheme.ends_with("Period")) return text + ".";
  if (scheme.ends_with("Minus")) return text + "-";
  return text;
}

}  // namespace render
