// Sections that show numbers: plain ones, with exponents, fractions.

#include <algorithm>
#include <cstddef>

#include "basic/numberformat/NumberFormatSections.h"

namespace basic {
namespace {

using Mark = NumberFormatMark;
using Marks = std::vector<NumberFormatMark>;
using Token = NumberFormatToken;

bool isPlaceholders(const Mark& mark) { return mark.kind == Mark::Placeholders; }

std::size_t find(const Marks& marks, Mark::Kind kind, std::size_t from = 0) {
  while (from < marks.size() && marks[from].kind != kind) ++from;
  return from;
}

int places(const Mark& mark) { return static_cast<int>(mark.text.size()); }

/// One number taken from left to right: whole part, decimals, exponent.
class NumberParser {
 public:
  NumberParser(const Marks& marks, NumberFormatSection& section) : marks_(marks), section_(section) {}

  void parse() {
    const std::size_t exponent = find(marks_, Mark::Exponent);
    const std::size_t point = findPoint(exponent);
    const bool hasExponent = exponent < marks_.size();
    section_.kind = hasExponent ? NumberFormatSection::Scientific : NumberFormatSection::Number;
    AddWholePart(marks_, point, section_);
    section_.fixedWholeDigits = std::none_of(marks_.begin(), at(point), [](const Mark& mark) {
      return isPlaceholders(mark) && mark.text.find_first_not_of('0') != std::string::npos;
    });
    decimals(point, exponent);
    if (hasExponent) exponentAt(exponent);
  }

 private:
  [[nodiscard]] Marks::const_iterator at(std::size_t index) const {
    return marks_.begin() + static_cast<std::ptrdiff_t>(index);
  }

  /// The decimal point stands beside digits ("Rs. 0.0"); `end` if there is none.
  [[nodiscard]] std::size_t findPoint(std::size_t end) const {
    for (std::size_t i = find(marks_, Mark::Point); i < end; i = find(marks_, Mark::Point, i + 1)) {
      if (i + 1 < marks_.size() && isPlaceholders(marks_[i + 1])) return i;
      if (i > 0 && (isPlaceholders(marks_[i - 1]) || marks_[i - 1].kind == Mark::Comma)) return i;
    }
    return end;
  }

  void decimals(std::size_t point, std::size_t end) {
    if (point == end) return;
    section_.tokens.push_back({Token::Point, 0, {}});
    std::size_t last = end - 1;
    while (last > point && !isPlaceholders(marks_[last])) --last;
    bool inNumber = true;
    for (std::size_t i = point + 1; i < end; ++i) {
      const Mark& mark = marks_[i];
      if (isPlaceholders(mark)) {
        section_.tokens.push_back({Token::Decimals, places(mark), mark.text});
        section_.decimalPlaces += places(mark);
      } else if (mark.kind == Mark::Comma && inNumber) {
        if (i > last) section_.scale -= 3;
      } else {
        other(mark);
        inNumber = i < last;
      }
    }
  }

  void exponentAt(std::size_t index) {
    section_.tokens.push_back({Token::ExponentMark, 0, marks_[index].text});
    section_.tokens.push_back({Token::Exponent, places(marks_[index + 1]), marks_[index + 1].text});
    for (std::size_t i = index + 2; i < marks_.size(); ++i) other(marks_[i]);
  }

  void other(const Mark& mark) {
    if (mark.kind == Mark::Percent) section_.scale += 2;
    AddLiteral(section_, mark.text);
  }

  const Marks& marks_;
  NumberFormatSection& section_;
};

/// Where the parts of a fraction stand among the marks.
struct FractionPlaces {
  std::size_t numerator;
  std::size_t slash;
  std::size_t denominator;
  std::size_t end;
};

/// The first slash with placeholders before it and placeholders or a number
/// behind it, blanks aside.
std::optional<FractionPlaces> findFraction(const Marks& marks) {
  for (std::size_t slash = find(marks, Mark::Slash); slash < marks.size();
       slash = find(marks, Mark::Slash, slash + 1)) {
    std::size_t before = slash;
    while (before > 0 && marks[before - 1].kind == Mark::Blank) --before;
    std::size_t after = slash + 1;
    while (after < marks.size() && marks[after].kind == Mark::Blank) ++after;
    if (before == 0 || !isPlaceholders(marks[before - 1]) || after == marks.size()) continue;
    std::size_t end = after;
    if (isPlaceholders(marks[after])) {
      end = after + 1;
    } else {
      const auto belongsToNumber = [&marks](std::size_t i) {
        return marks[i].kind == Mark::Digit ||
               (isPlaceholders(marks[i]) && marks[i].text.find_first_not_of('0') == std::string::npos);
      };
      if (marks[after].kind != Mark::Digit) continue;
      while (end < marks.size() && belongsToNumber(end)) ++end;
    }
    return FractionPlaces{before - 1, slash, after, end};
  }
  return std::nullopt;
}

/// A denominator as written out, 0 if it is too large to be one.
double denominatorOf(std::string_view digits) {
  constexpr std::size_t MostDigits = 9;
  if (digits.size() > MostDigits) return 0.0;
  double value = 0.0;
  for (const char digit : digits) value = value * 10.0 + (digit - '0');
  return value;
}

}  // namespace

void AddWholePart(const Marks& marks, std::size_t end, NumberFormatSection& section) {
  std::size_t last = end;
  for (std::size_t i = end; i > 0; --i) {
    if (!isPlaceholders(marks[i - 1])) continue;
    last = i - 1;
    break;
  }
  bool afterPlaceholder = false;
  for (std::size_t i = 0; i < end; ++i) {
    const Mark& mark = marks[i];
    if (isPlaceholders(mark)) {
      section.tokens.push_back({Token::Whole, places(mark), mark.text});
      section.wholePlaces += places(mark);
      afterPlaceholder = true;
    } else if (mark.kind == Mark::Comma && afterPlaceholder && i < last) {
      section.grouped = true;
    } else if (mark.kind == Mark::Comma && afterPlaceholder) {
      section.scale -= 3;
    } else {
      if (mark.kind == Mark::Percent) section.scale += 2;
      if (i > last) afterPlaceholder = false;
      AddLiteral(section, mark.text);
    }
  }
}

void ParseNumberMarks(const Marks& marks, NumberFormatSection& section) {
  if (std::any_of(marks.begin(), marks.end(), isPlaceholders)) return NumberParser(marks, section).parse();
  for (const Mark& mark : marks) AddLiteral(section, mark.text);
}

bool ParseFractionMarks(const Marks& marks, NumberFormatSection& section) {
  const std::optional<FractionPlaces> at = findFraction(marks);
  if (!at) return false;
  std::string denominator;
  for (std::size_t i = at->denominator; i < at->end; ++i) denominator += marks[i].text;
  const bool isLookedFor = isPlaceholders(marks[at->denominator]);
  if (!isLookedFor && denominatorOf(denominator) == 0.0) return false;

  section.kind = NumberFormatSection::Fraction;
  section.denominator = isLookedFor ? 0.0 : denominatorOf(denominator);
  AddWholePart(marks, at->numerator, section);
  section.mixed = section.wholePlaces > 0;
  const std::string& numerator = marks[at->numerator].text;
  constexpr std::size_t MostDigits = 7;
  section.denominatorPlaces = static_cast<int>(std::min(denominator.size(), MostDigits));
  section.numeratorPlaces = static_cast<int>(numerator.size());
  // Before a whole number the numerator is as wide as the denominator, that its
  // fractions line up.
  if (isLookedFor && section.mixed)
    section.numeratorPlaces = std::max(section.numeratorPlaces, section.denominatorPlaces);
  section.tokens.push_back({Token::Numerator, 0, numerator});
  for (std::size_t i = at->numerator + 1; i < at->denominator; ++i) AddLiteral(section, marks[i].text);
  section.tokens.push_back({Token::Denominator, 0, denominator});
  for (std::size_t i = at->end; i < marks.size(); ++i) {
    if (marks[i].kind == Mark::Percent) section.scale += 2;
    AddLiteral(section, marks[i].text);
  }
  return true;
}

}  // namespace basic
