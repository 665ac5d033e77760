// Numbers, exponents and fractions are written by their marks.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "basic/Strings.h"
#include "basic/numberformat/NumberFormatDigits.h"
#include "basic/numberformat/NumberFormatWriter.h"

namespace basic {
namespace {

using Token = NumberFormatToken;

/// The digits before the point, on their placeholders.
class WholePart {
 public:
  WholePart(std::string& to, const NumberFormatSection& section, const Locale& locale)
      : to_(to), section_(section), locale_(locale), place_(section.wholePlaces) {}

  void write(std::string_view placeholders, const SignificantDigits& digits) {
    writeLeading(digits);
    for (const char placeholder : placeholders) {
      --place_;
      if (place_ < digits.wholeDigits() || placeholder == '0') {
        write(digits.at(place_), place_);
      } else if (placeholder == '?') {
        to_ += ' ';
        if (isGroupEnd(place_)) to_ += ' ';
      }
    }
  }

  [[nodiscard]] bool isLast(const Token& token) const {
    return place_ == static_cast<int>(token.text.size());
  }

  /// The digits that have no placeholder: they stand in front of the first one,
  /// or of the point.
  void writeLeading(const SignificantDigits& digits) {
    if (place_ != section_.wholePlaces) return;
    for (int place = digits.wholeDigits() - 1; place >= place_; --place) write(digits.at(place), place);
  }

 private:
  [[nodiscard]] bool isGroupEnd(int place) const { return section_.grouped && place > 0 && place % 3 == 0; }

  void write(char digit, int place) {
    to_ += digit;
    if (isGroupEnd(place)) to_ += locale_.thousandsSeparator;
  }

  std::string& to_;
  const NumberFormatSection& section_;
  const Locale& locale_;
  /// Where the next placeholder stands: one above its power of ten.
  int place_;
};

/// The digits behind the point, on their placeholders.
class DecimalPart {
 public:
  DecimalPart(std::string& to, const SignificantDigits& digits)
      : to_(to), digits_(digits), last_(digits.count() - digits.wholeDigits()) {}

  void write(std::string_view placeholders) {
    for (const char placeholder : placeholders) {
      ++place_;
      if (place_ <= last_ || placeholder == '0') {
        to_ += digits_.at(-place_);
      } else if (placeholder == '?') {
        to_ += ' ';
      }
    }
  }

 private:
  std::string& to_;
  const SignificantDigits& digits_;
  int last_;
  int place_ = 0;
};

/// Of the power of ten: the whole part has as many digits as zeros, or makes the
/// exponent a multiple of the number of its places ("##0.0E+0": of 3).
int exponentFor(const SignificantDigits& digits, const NumberFormatSection& section) {
  if (digits.count() == 0) return 0;
  if (section.fixedWholeDigits) return digits.wholeDigits() - section.wholePlaces;
  const int size = digits.wholeDigits() - 1;
  const int step = section.wholePlaces;
  return (size >= 0 ? size / step : (size - step + 1) / step) * step;
}

/// Rounds the digits to what a section with an exponent shows; gives the exponent.
int splitExponent(SignificantDigits& digits, const NumberFormatSection& section) {
  const int exponent = exponentFor(digits, section);
  digits.roundTo(section.decimalPlaces - exponent);
  // Rounding may have made one digit more of it.
  const int rounded = exponentFor(digits, section);
  digits.shift(-rounded);
  return rounded;
}

void appendExponentMark(std::string& to, const Token& token, int exponent) {
  to += 'E';
  if (exponent < 0) {
    to += '-';
  } else if (token.text[1] == '+') {
    to += '+';
  }
}

void appendNumber(std::string& to, const NumberFormatSection& section, double magnitude,
                  const Locale& locale) {
  SignificantDigits digits(magnitude);
  digits.shift(section.scale);
  int exponent = 0;
  if (section.kind == NumberFormatSection::Scientific) {
    exponent = splitExponent(digits, section);
  } else {
    digits.roundTo(section.decimalPlaces);
  }
  WholePart whole(to, section, locale);
  DecimalPart decimals(to, digits);
  for (const Token& token : section.tokens) {
    switch (token.kind) {
      case Token::Whole:
        whole.write(token.text, digits);
        break;
      case Token::Point:
        whole.writeLeading(digits);
        to += locale.decimalSeparator;
        break;
      case Token::Decimals:
        decimals.write(token.text);
        break;
      case Token::ExponentMark:
        appendExponentMark(to, token, exponent);
        break;
      case Token::Exponent:
        AppendPadded(to, std::abs(exponent),
                     static_cast<int>(std::count(token.text.begin(), token.text.end(), '0')));
        break;
      default:
        to += token.text;
    }
  }
}

struct Fraction {
  double whole = 0.0;
  double numerator = 0.0;
  double denominator = 1.0;
};

/// The last continued fraction whose denominator is not too large.
Fraction approximate(double magnitude, double largestDenominator) {
  constexpr double Exact = 5e-8;
  Fraction result;
  result.whole = std::floor(magnitude);
  double rest = magnitude - result.whole;
  double previousNumerator = 1.0;
  double previousDenominator = 0.0;
  while (rest >= Exact) {
    const double inverse = 1.0 / rest;
    const double part = std::floor(inverse);
    rest = inverse - part;
    const double numerator = part * result.numerator + previousNumerator;
    const double denominator = part * result.denominator + previousDenominator;
    if (denominator > largestDenominator) break;
    previousNumerator = result.numerator;
    previousDenominator = result.denominator;
    result.numerator = numerator;
    result.denominator = denominator;
  }
  return result;
}

Fraction fractionFor(double magnitude, const NumberFormatSection& section) {
  Fraction result;
  if (section.denominator > 0.0) {
    result.whole = std::floor(magnitude);
    result.denominator = section.denominator;
    result.numerator = std::round((magnitude - result.whole) * section.denominator);
  } else {
    result = approximate(magnitude, std::pow(10.0, section.denominatorPlaces) - 1.0);
  }
  if (!section.mixed) {
    result.numerator += result.whole * result.denominator;
    result.whole = 0.0;
  } else if (result.numerator == result.denominator) {
    result.whole += 1.0;
    result.numerator = 0.0;
  }
  return result;
}

std::string wholeText(double value) {
  const SignificantDigits digits(value);
  std::string text(1, digits.at(std::max(digits.wholeDigits() - 1, 0)));
  for (int place = digits.wholeDigits() - 2; place >= 0; --place) text += digits.at(place);
  return text;
}

std::size_t placesOf(std::string_view placeholders, char placeholder) {
  const std::size_t first = placeholders.find(placeholder);
  return first == std::string_view::npos ? 0 : placeholders.size() - first;
}

/// Zeros where 0 asks for them, blanks where ? does.
void appendNumerator(std::string& to, const Token& token, double value, const NumberFormatSection& section) {
  std::string text = wholeText(value);
  const std::size_t zeros = placesOf(token.text, '0');
  if (text.size() < zeros) text.insert(0, zeros - text.size(), '0');
  std::size_t blanks = placesOf(token.text, '?');
  if (blanks > 0 && section.mixed) blanks = static_cast<std::size_t>(section.numeratorPlaces);
  if (text.size() < blanks) to.append(blanks - text.size(), ' ');
  to += text;
}

void appendDenominator(std::string& to, const Token& token, double value,
                       const NumberFormatSection& section) {
  if (section.denominator > 0.0) {
    to += token.text;
    return;
  }
  const std::string text = wholeText(value);
  const std::size_t zeros = placesOf(token.text, '0');
  if (text.size() < zeros) to.append(zeros - text.size(), '0');
  to += text;
  const auto width = static_cast<std::size_t>(section.denominatorPlaces);
  if (zeros == 0 && token.text.find('?') != std::string::npos && text.size() < width)
    to.append(width - text.size(), ' ');
}

void appendFraction(std::string& to, const NumberFormatSection& section, double magnitude,
                    const Locale& locale) {
  const double scaled = section.scale == 0 ? magnitude : magnitude * std::pow(10.0, section.scale);
  const Fraction fraction = std::isfinite(scaled) ? fractionFor(scaled, section) : Fraction{scaled, scaled};
  // Beyond the range of numbers the fraction says nothing.
  if (!std::isfinite(fraction.numerator)) return AppendGeneral(to, magnitude, locale.decimalSeparator);
  const SignificantDigits wholeDigits(fraction.whole);
  const bool blank = section.mixed && fraction.numerator == 0.0;
  WholePart whole(to, section, locale);
  std::size_t start = 0;
  for (const Token& token : section.tokens) {
    switch (token.kind) {
      case Token::Whole:
        // Nothing at all is shown as 0, whatever the placeholder.
        if (blank && fraction.whole == 0.0 && whole.isLast(token)) {
          whole.write(token.text.substr(1) + '0', wholeDigits);
        } else {
          whole.write(token.text, wholeDigits);
        }
        break;
      case Token::Numerator:
        start = to.size();
        appendNumerator(to, token, fraction.numerator, section);
        break;
      case Token::Denominator:
        appendDenominator(to, token, fraction.denominator, section);
        if (blank) to.replace(start, to.size() - start, Len(std::string_view(to).substr(start)), ' ');
        break;
      default:
        to += token.text;
    }
  }
}

}  // namespace

void AppendNumberSection(std::string& to, const NumberFormatSection& section, double value,
                         const Locale& locale) {
  if (value < 0.0 && !section.dropsSign) to += '-';
  const double magnitude = value < 0.0 ? -value : value;
  if (section.kind == NumberFormatSection::Fraction) {
    appendFraction(to, section, magnitude, locale);
  } else {
    appendNumber(to, section, magnitude, locale);
  }
}

void AppendPadded(std::string& to, long long value, int width) {
  std::array<char, 24> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
  const auto length = static_cast<int>(end.ptr - text.data());
  if (length < width) to.append(static_cast<std::size_t>(width - length), '0');
  to.append(text.data(), end.ptr);
}

}  // namespace basic
