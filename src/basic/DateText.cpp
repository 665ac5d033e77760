// A text is read as a date and a time.

#include "basic/DateText.h"

#include <algorithm>

#include "basic/DateTokens.h"
#include "basic/DayText.h"

namespace basic {
namespace {

struct Time {
  int hour = 0;
  int minute = 0;
  int second = 0;
};

bool is(Tokens tokens, std::size_t at, DateToken::Kind kind) {
  return at < tokens.size() && tokens[at].kind == kind;
}

/// A number of a time: one or two digits, below the limit.
bool timePart(Tokens tokens, std::size_t at, int limit, int& part) {
  if (!is(tokens, at, DateToken::Number) || tokens[at].digits > 2 || tokens[at].value >= limit) return false;
  part = tokens[at].value;
  return true;
}

bool applyHalfOfDay(bool afternoon, int& hour) {
  if (hour > 12) return afternoon;
  hour = hour % 12 + (afternoon ? 12 : 0);
  return true;
}

bool isHalfOfDay(const DateToken& token) {
  return token.kind == DateToken::Am || token.kind == DateToken::Pm;
}

/// A point or comma with digits after it, all without blanks.
bool isFraction(Tokens tokens, std::size_t at) {
  const bool point = is(tokens, at, DateToken::Comma) ||
                     (is(tokens, at, DateToken::DateSeparator) && tokens[at].separator == '.');
  return point && is(tokens, at + 1, DateToken::Number) && !tokens[at].spaceBefore &&
         !tokens[at + 1].spaceBefore;
}

/// A time at the beginning of the tokens, which it is taken off: "h:nn",
/// "h:nn:ss", "h:nn:ss.fff" (the fraction is dropped), each with or without
/// AM/PM (after it, or before it as Eastern Asia writes), or an hour followed by
/// AM/PM. `separator` stands between its parts.
std::optional<Time> takeTime(Tokens& tokens, DateToken::Kind separator) {
  Time time;
  const DateToken* half = nullptr;
  if (!tokens.empty() && isHalfOfDay(tokens.front())) {
    half = &tokens.front();
    tokens = tokens.subspan(1);
  }
  std::size_t at = 1;
  if (!timePart(tokens, 0, 24, time.hour)) return std::nullopt;
  const bool minutes = is(tokens, at, separator);
  if (minutes) {
    if (!timePart(tokens, at + 1, 60, time.minute)) return std::nullopt;
    at += 2;
    if (is(tokens, at, separator)) {
      if (!timePart(tokens, at + 1, 60, time.second)) return std::nullopt;
      at += 2;
      if (isFraction(tokens, at)) at += 2;
    }
  }
  const bool halfAfter = half == nullptr && at < tokens.size() && isHalfOfDay(tokens[at]);
  if (halfAfter) half = &tokens[at++];
  if (!minutes && !halfAfter) return std::nullopt;
  if (half != nullptr && !applyHalfOfDay(half->kind == DateToken::Pm, time.hour)) return std::nullopt;
  tokens = tokens.subspan(at);
  return time;
}

Date dateOf(const Day& day, const Time& time) {
  return DateFrom(day.year, day.month, day.day, time.hour, time.minute, time.second);
}

class Parser {
 public:
  Parser(Tokens tokens, const Locale& locale, int thisYear)
      : tokens_(tokens), order_(OrderOf(locale.shortDate)), thisYear_(thisYear) {}

  std::optional<Date> parse() {
    const std::size_t time = timeBegin();
    if (time < tokens_.size()) return withTime(time, DateToken::Colon);
    if (const auto day = ParseDay(tokens_, order_, thisYear_)) return dateOf(*day, Time());
    return std::nullopt;
  }

  /// Where times are written with the separator of dates: the time is the last
  /// run of characters.
  std::optional<Date> parseSharedSeparator() {
    std::size_t begin = tokens_.size() - 1;
    while (begin > 0 && !tokens_[begin].spaceBefore) --begin;
    return withTime(begin, DateToken::DateSeparator);
  }

 private:
  /// The hour before the first colon or AM/PM, or an AM/PM before the hour.
  [[nodiscard]] std::size_t timeBegin() const {
    const auto mark = std::find_if(tokens_.begin(), tokens_.end(), [](const DateToken& token) {
      return token.kind == DateToken::Colon || isHalfOfDay(token);
    });
    const auto at = static_cast<std::size_t>(mark - tokens_.begin());
    if (mark == tokens_.end() || at == 0) return at;
    return isHalfOfDay(*mark) && is(tokens_, at + 2, DateToken::Colon) ? at : at - 1;
  }

  std::optional<Date> withTime(std::size_t begin, DateToken::Kind separator) {
    Tokens after = tokens_.subspan(begin);
    const auto time = takeTime(after, separator);
    if (!time) return std::nullopt;
    Tokens before = tokens_.first(begin);
    if (before.empty() && after.empty()) return dateOf(Day(), *time);
    if (!before.empty() && !after.empty()) return std::nullopt;
    if (after.empty()) {
      if (before.back().kind == DateToken::T) {
        if (before.front().digits != 4) return std::nullopt;
        before = before.first(before.size() - 1);
      } else if (before.back().kind == DateToken::Comma) {
        before = before.first(before.size() - 1);
      }
    } else if (after.front().kind == DateToken::Comma) {
      after = after.subspan(1);
    }
    const auto day = ParseDay(before.empty() ? after : before, order_, thisYear_);
    if (!day) return std::nullopt;
    return dateOf(*day, *time);
  }

  Tokens tokens_;
  DayOrder order_;
  int thisYear_;
};

}  // namespace

std::optional<Date> ParseDate(std::string_view text, const Locale& locale, int thisYear) {
  DateTokens tokens;
  if (!tokens.read(text, locale)) return std::nullopt;
  Parser parser(tokens.all(), locale, thisYear);
  if (const auto date = parser.parse()) return date;
  if (locale.timeSeparator == ".") return parser.parseSharedSeparator();
  return std::nullopt;
}

}  // namespace basic
