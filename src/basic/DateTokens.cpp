// A text is taken apart into what dates are made of.

#include "basic/DateTokens.h"

#include <algorithm>

#include "basic/NumberText.h"

namespace basic {
namespace {

constexpr std::array<std::string_view, 12> EnglishMonths = {"January",   "February", "March",    "April",
                                                            "May",       "June",     "July",     "August",
                                                            "September", "October",  "November", "December"};
constexpr std::size_t EnglishShortLength = 3;

constexpr bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool isLetter(char c) { return isAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80; }

/// A code point of one or two bytes; longer ones come byte by byte, as the
/// alphabets that have two cases and name months in them need no more.
unsigned nextLetter(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first >= 0xC2 && first < 0xE0 && text.size() > 1) {
    const unsigned letter = (first & 0x1FU) << 6 | (static_cast<unsigned char>(text[1]) & 0x3FU);
    text.remove_prefix(2);
    return letter;
  }
  text.remove_prefix(1);
  return first < 0x80 ? first : 0x110000U + first;
}

unsigned lower(unsigned letter) {
  if (letter >= 'A' && letter <= 'Z') return letter + 0x20;
  if (letter >= 0xC0 && letter <= 0xDE && letter != 0xD7) return letter + 0x20;
  if (letter >= 0x100 && letter <= 0x137) return letter | 1U;
  if (letter >= 0x139 && letter <= 0x148) return letter + letter % 2;
  if (letter >= 0x14A && letter <= 0x177) return letter | 1U;
  if (letter >= 0x179 && letter <= 0x17E) return letter + letter % 2;
  if (letter >= 0x391 && letter <= 0x3AB) return letter + 0x20;
  if (letter >= 0x400 && letter <= 0x40F) return letter + 0x50;
  if (letter >= 0x410 && letter <= 0x42F) return letter + 0x20;
  return letter;
}

/// The longest of the offered words that a text begins with.
struct Match {
  int value = 0;
  std::size_t length = 0;

  void offer(int candidate, std::string_view text, std::string_view word) {
    if (word.size() > length && BeginsWithWord(text, word)) {
      value = candidate;
      length = word.size();
    }
  }
};

Match matchMonth(std::string_view text, const Locale& locale) {
  Match match;
  for (std::size_t i = 0; i < 12; ++i) {
    const int month = static_cast<int>(i) + 1;
    match.offer(month, text, locale.months[i]);
    match.offer(month, text, locale.shortMonths[i]);
  }
  if (match.length > 0) return match;
  for (std::size_t i = 0; i < 12; ++i) {
    const int month = static_cast<int>(i) + 1;
    match.offer(month, text, EnglishMonths[i]);
    match.offer(month, text, EnglishMonths[i].substr(0, EnglishShortLength));
  }
  return match;
}

Match matchHalfOfDay(std::string_view text, const Locale& locale) {
  Match match;
  for (const std::string_view word :
       {std::string_view(locale.am), std::string_view("am"), std::string_view("a")}) {
    match.offer(DateToken::Am, text, word);
  }
  for (const std::string_view word :
       {std::string_view(locale.pm), std::string_view("pm"), std::string_view("p")}) {
    match.offer(DateToken::Pm, text, word);
  }
  return match;
}

std::size_t readNumber(std::string_view text, DateToken& token) {
  constexpr std::size_t MostDigits = 9;  // more are no part of a date, but must not overflow
  std::size_t length = 0;
  for (; length < text.size() && IsDigit(text[length]); ++length) {
    if (length < MostDigits) token.value = token.value * 10 + (text[length] - '0');
  }
  token.kind = DateToken::Number;
  token.digits = static_cast<int>(std::min(length, MostDigits));
  return length;
}

std::size_t readSeparator(std::string_view text, const Locale& locale, DateToken& token) {
  token.separator = text[0];
  token.kind = DateToken::DateSeparator;
  switch (text[0]) {
    case '/':
    case '-':
    case '.':
      return 1;
    case ':':
      token.kind = DateToken::Colon;
      return 1;
    case ',':
      token.kind = DateToken::Comma;
      return 1;
    default:
      break;
  }
  const std::string_view ofDate = WithoutWhite(locale.dateSeparator);
  if (!ofDate.empty() && text.starts_with(ofDate)) return ofDate.size();
  token.kind = DateToken::Colon;
  const std::string_view ofTime = WithoutWhite(locale.timeSeparator);
  return text.starts_with(ofTime) ? ofTime.size() : 0;
}

std::size_t readWord(std::string_view text, const Locale& locale, DateToken& token) {
  if (const Match half = matchHalfOfDay(text, locale); half.length > 0) {
    token.kind = static_cast<DateToken::Kind>(half.value);
    return half.length;
  }
  if (const Match month = matchMonth(text, locale); month.length > 0) {
    token.kind = DateToken::Month;
    token.value = month.value;
    return month.length;
  }
  if (text.size() > 1 && (text[0] == 'T' || text[0] == 't') && IsDigit(text[1])) {
    token.kind = DateToken::T;
    return 1;
  }
  return 0;
}

/// Reads one token from the beginning of the text, which is not empty and no
/// blank. Its length, 0 for what belongs to no date.
std::size_t readToken(std::string_view text, const Locale& locale, DateToken& token) {
  if (IsDigit(text[0])) return readNumber(text, token);
  const std::size_t length = readSeparator(text, locale, token);
  return length > 0 ? length : readWord(text, locale, token);
}

}  // namespace

bool BeginsWithWord(std::string_view text, std::string_view word) {
  if (word.empty() || text.size() < word.size()) return false;
  const bool endsInLetter = isLetter(word.back());
  const std::string_view after = text.substr(word.size());
  text = text.substr(0, word.size());
  while (!word.empty() && !text.empty()) {
    if (lower(nextLetter(text)) != lower(nextLetter(word))) return false;
  }
  return word.empty() && text.empty() && !(endsInLetter && !after.empty() && isLetter(after[0]));
}

bool DateTokens::add(DateToken token) {
  if (count_ == tokens_.size()) return false;
  tokens_[count_++] = token;
  return true;
}

bool DateTokens::read(std::string_view text, const Locale& locale) {
  bool space = true;
  while (!text.empty()) {
    if (IsWhite(text[0])) {
      space = true;
      text.remove_prefix(1);
      continue;
    }
    DateToken token;
    token.spaceBefore = space;
    const std::size_t length = readToken(text, locale, token);
    if (length == 0 || !add(token)) return false;
    text.remove_prefix(length);
    space = false;
  }
  return count_ > 0;
}

}  // namespace basic
