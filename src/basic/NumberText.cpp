// Numbers are read from text and written.

#include "basic/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "basic/Error.h"

namespace basic {
namespace {

/// Takes the digits of one number apart from left to right.
class Reader {
 public:
  Reader(std::string_view text, const Locale& locale, Grouping grouping)
      : rest_(WithoutWhite(text)), locale_(locale), grouping_(grouping) {}

  std::optional<double> read() {
    if (const auto prefixed = ParsePrefixed(rest_)) return static_cast<double>(*prefixed);
    if (!signsAround() || !digits() || !rest_.empty()) return std::nullopt;
    return value();
  }

 private:
  bool take(std::string_view what) {
    if (what.empty() || !rest_.starts_with(what)) return false;
    rest_.remove_prefix(what.size());
    return true;
  }

  /// Strips sign or parentheses from both ends; at most one of them stands there.
  bool signsAround() {
    if (rest_.empty()) return false;
    const char first = rest_.front();
    const char last = rest_.back();
    if (first == '+' || first == '-') {
      negative_ = first == '-';
      rest_.remove_prefix(1);
    } else if (first == '(' && last == ')' && rest_.size() > 1) {
      negative_ = true;
      rest_ = rest_.substr(1, rest_.size() - 2);
    } else if (last == '+' || last == '-') {
      negative_ = last == '-';
      rest_.remove_suffix(1);
    }
    rest_ = WithoutWhite(rest_);
    return true;
  }

  bool digits() {
    if (negative_) plain_ += '-';
    wholeDigits_ = digitRun(true);
    std::size_t count = wholeDigits_;
    if (take(locale_.decimalSeparator)) {
      plain_ += '.';
      count += digitRun(false);
    }
    return count > 0 && exponent();
  }

  /// Copies digits, passing over separators of thousands, and counts them.
  std::size_t digitRun(bool whole) {
    std::size_t count = 0;
    while (!rest_.empty()) {
      if (IsDigit(rest_.front())) {
        plain_ += rest_.front();
        rest_.remove_prefix(1);
        ++count;
      } else if (!whole || count == 0 || !takeGroupSeparator()) {
        break;
      }
    }
    return count;
  }

  /// Where the separator is one of the unbreakable blanks, people type a blank.
  bool takeGroupSeparator() {
    if (grouping_ == Grouping::Refused) return false;
    const std::string_view separator = locale_.thousandsSeparator;
    if (take(separator)) return true;
    const bool unbreakable = separator == "\u00A0" || separator == "\u202F";
    return unbreakable && (take(" ") || take("\u00A0") || take("\u202F"));
  }

  bool exponent() {
    if (rest_.empty()) return true;
    const char letter = rest_.front();
    if (letter != 'e' && letter != 'E' && letter != 'd' && letter != 'D') return true;
    rest_.remove_prefix(1);
    const bool negative = take("-");
    if (!negative) take("+");
    std::size_t length = 0;
    while (length < rest_.size() && IsDigit(rest_[length])) ++length;
    if (length == 0) return false;
    // More digits than any exponent has: any number that large does as well.
    int magnitude = 0;
    if (std::from_chars(rest_.data(), rest_.data() + length, magnitude).ec != std::errc())
      magnitude = 999999999;
    exponent_ = negative ? -magnitude : magnitude;
    rest_.remove_prefix(length);
    return true;
  }

  double value() {
    if (exponent_ != 0) {
      plain_ += 'e';
      plain_ += std::to_string(exponent_);
    }
    double result = 0.0;
    const auto [end, error] = std::from_chars(plain_.data(), plain_.data() + plain_.size(), result);
    if (error == std::errc() && std::isfinite(result)) return result;
    if (isLarge()) Raise(RuntimeError::Overflow);
    return 0.0;
  }

  /// Of a number beyond the range of a double: too large rather than too small.
  [[nodiscard]] bool isLarge() const {
    const std::size_t first = plain_.find_first_of("123456789");
    if (first == std::string::npos) return false;
    const auto beforePoint = static_cast<std::int64_t>(wholeDigits_ + (negative_ ? 1 : 0));
    return beforePoint - static_cast<std::int64_t>(first) + exponent_ > 0;
  }

  std::string_view rest_;
  const Locale& locale_;
  Grouping grouping_;
  bool negative_ = false;
  std::string plain_;  // what std::from_chars reads
  std::size_t wholeDigits_ = 0;
  int exponent_ = 0;
};

}  // namespace

std::string_view WithoutWhite(std::string_view text) {
  while (!text.empty() && IsWhite(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsWhite(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<double> ParseNumber(std::string_view text, const Locale& locale, Grouping grouping) {
  return Reader(text, locale, grouping).read();
}

std::optional<std::uint64_t> ParsePrefixed(std::string_view text) {
  text = WithoutWhite(text);
  if (text.size() < 3 || text[0] != '&') return std::nullopt;
  int base = 0;
  if (text[1] == 'H' || text[1] == 'h') base = 16;
  if (text[1] == 'O' || text[1] == 'o') base = 8;
  if (base == 0) return std::nullopt;
  std::uint64_t bits = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data() + 2, last, bits, base);
  if (end != last) return std::nullopt;
  if (error == std::errc::result_out_of_range) Raise(RuntimeError::Overflow);
  return bits;
}

std::string NumberText(double value, std::string_view decimalSeparator) {
  if (std::isnan(value)) return "-1.#IND";
  if (std::isinf(value)) return value < 0 ? "-1.#INF" : "1.#INF";
  if (value == 0.0) return "0";

  constexpr int SignificantDigits = 15;
  constexpr int LowestPlainExponent = -4;
  char buffer[32];
  const char* const end = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value),
                                        std::chars_format::scientific, SignificantDigits - 1)
                              .ptr;
  const char* const mark = std::find(static_cast<const char*>(buffer), end, 'e');
  int exponent = 0;
  std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, end, exponent);

  // "d.dddd" loses its point and the zeros at its end.
  buffer[1] = buffer[0];
  std::string_view digits(buffer + 1, static_cast<std::size_t>(mark - buffer) - 1);
  digits = digits.substr(0, digits.find_last_not_of('0') + 1);

  std::string text;
  if (value < 0) text += '-';
  if (exponent < LowestPlainExponent || exponent >= SignificantDigits) {
    text += digits[0];
    if (digits.size() > 1) text.append(decimalSeparator).append(digits.substr(1));
    text.append("E").append(mark + 1, end);
  } else if (exponent < 0) {
    text.append("0")
        .append(decimalSeparator)
        .append(static_cast<std::size_t>(-exponent - 1), '0')
        .append(digits);
  } else {
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    text.append(digits.substr(0, whole));
    if (digits.size() > whole) {
      text.append(decimalSeparator).append(digits.substr(whole));
    } else {
      text.append(whole - digits.size(), '0');
    }
  }
  return text;
}

}  // namespace basic
