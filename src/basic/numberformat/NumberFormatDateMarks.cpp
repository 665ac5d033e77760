// Sections that show dates and times.

#include <algorithm>
#include <cstddef>

#include "basic/numberformat/NumberFormatSections.h"

namespace basic {
namespace {

using Mark = NumberFormatMark;
using Token = NumberFormatToken;

constexpr int MostSecondDecimals = 9;

bool isTime(Token::Kind kind) { return kind >= Token::Hour; }

bool isSeconds(Token::Kind kind) {
  return kind == Token::Second || kind == Token::ElapsedSeconds || kind == Token::SecondDecimals;
}

Token::Kind tokenKind(Mark::Kind kind) {
  switch (kind) {
    case Mark::Slash:
      return Token::DateSeparator;
    case Mark::Colon:
      return Token::TimeSeparator;
    case Mark::Year:
      return Token::Year;
    case Mark::BuddhistYear:
      return Token::BuddhistYear;
    case Mark::Month:
      return Token::Month;
    case Mark::Day:
      return Token::Day;
    case Mark::Weekday:
      return Token::Weekday;
    case Mark::Hour:
      return Token::Hour;
    case Mark::Second:
      return Token::Second;
    case Mark::HalfOfDay:
      return Token::HalfOfDay;
    case Mark::ElapsedHours:
      return Token::ElapsedHours;
    case Mark::ElapsedMinutes:
      return Token::ElapsedMinutes;
    case Mark::ElapsedSeconds:
      return Token::ElapsedSeconds;
    default:
      return Token::Literal;
  }
}

/// m and mm are the minute next to an hour before or seconds behind.
void findMinutes(std::vector<Token>& tokens) {
  const auto isDatePart = [](const Token& token) {
    return token.kind >= Token::Year && token.kind != Token::HalfOfDay;
  };
  Token* before = nullptr;
  for (Token& token : tokens) {
    if (!isDatePart(token)) continue;
    const bool afterHour =
        before != nullptr && (before->kind == Token::Hour || before->kind == Token::ElapsedHours);
    if (token.kind == Token::Month && token.count <= 2 && afterHour) token.kind = Token::Minute;
    if (before != nullptr && before->kind == Token::Month && before->count <= 2 && isSeconds(token.kind))
      before->kind = Token::Minute;
    before = &token;
  }
}

}  // namespace

void ParseDateMarks(const NumberFormatMarks& symbols, NumberFormatSection& section) {
  const std::vector<Mark>& marks = symbols.marks;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const Mark& mark = marks[i];
    // The era of the Gregorian calendar is not named.
    if (mark.kind == Mark::Era) continue;
    if (mark.kind == Mark::Calendar) {
      section.islamic = mark.text[1] == '2';
    } else if (i + 1 < marks.size() && symbols.isSecondDecimals(i + 1)) {
      const auto count = static_cast<int>(marks[++i].text.size());
      section.tokens.push_back({Token::SecondDecimals, count, {}});
      section.secondDecimals = std::min(std::max(section.secondDecimals, count), MostSecondDecimals);
    } else if (const Token::Kind kind = tokenKind(mark.kind); kind == Token::Literal) {
      AddLiteral(section, mark.text);
    } else {
      // e is the year in full, however short.
      const bool fullYear = kind == Token::Year && (mark.text[0] == 'e' || mark.text[0] == 'E');
      section.tokens.push_back({kind, fullYear ? 4 : static_cast<int>(mark.text.size()), mark.text});
      if (kind == Token::HalfOfDay) section.twelveHours = true;
    }
  }
  findMinutes(section.tokens);
  section.showsTime = std::any_of(section.tokens.begin(), section.tokens.end(),
                                  [](const Token& token) { return isTime(token.kind); });
}

}  // namespace basic
