// A section of a code is taken apart into marks.

#include "basic/numberformat/NumberFormatMarks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "basic/NumberText.h"
#include "basic/Strings.h"

namespace basic {
namespace {

using Mark = NumberFormatMark;

constexpr std::size_t MostSections = 4;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isPlaceholder(char c) { return c == '0' || c == '#' || c == '?'; }

/// How often the letter that the text begins with stands there, in either case.
std::size_t runLength(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && lower(text[length]) == lower(text[0])) ++length;
  return length;
}

int colorOf(std::string_view name) {
  constexpr std::array<std::string_view, 8> Names = {"Black", "White",  "Red",     "Green",
                                                     "Blue",  "Yellow", "Magenta", "Cyan"};
  for (std::size_t i = 0; i < Names.size(); ++i) {
    if (EqualsIgnoreCase(name, Names[i])) return static_cast<int>(i) + 1;
  }
  constexpr std::string_view Indexed = "Color";
  if (!EqualsIgnoreCase(name.substr(0, Indexed.size()), Indexed)) return 0;
  const std::string_view digits = WithoutWhite(name.substr(Indexed.size()));
  int index = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), index);
  const bool known =
      error == std::errc() && end == digits.data() + digits.size() && index >= 1 && index <= 56;
  return known ? index : 0;
}

using Condition = NumberFormatCondition;

std::optional<Condition> conditionOf(std::string_view text) {
  struct Relation {
    std::string_view sign;
    Condition::Relation relation;
  };
  constexpr std::array<Relation, 6> Relations = {{{"<=", Condition::LessOrEqual},
                                                  {"<>", Condition::NotEqual},
                                                  {">=", Condition::GreaterOrEqual},
                                                  {"<", Condition::Less},
                                                  {">", Condition::Greater},
                                                  {"=", Condition::Equal}}};
  for (const auto& [sign, relation] : Relations) {
    if (!StartsWith(text, sign)) continue;
    const std::string_view number = WithoutWhite(text.substr(sign.size()));
    Condition condition{relation, 0.0};
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), condition.limit);
    const bool whole = error == std::errc() && end == number.data() + number.size();
    if (whole && std::isfinite(condition.limit)) return condition;
    return std::nullopt;
  }
  return std::nullopt;
}

class Scanner {
 public:
  explicit Scanner(std::string_view code) : rest_(code) {}

  std::vector<NumberFormatMarks> scan() {
    sections_.emplace_back();
    while (!rest_.empty()) {
      if (rest_.front() == ';') {
        if (sections_.size() == MostSections) break;
        sections_.emplace_back();
        rest_.remove_prefix(1);
      } else {
        next();
      }
    }
    return std::move(sections_);
  }

 private:
  std::vector<Mark>& marks() { return sections_.back().marks; }

  void take(Mark::Kind kind, std::size_t length) {
    marks().push_back({kind, std::string(rest_.substr(0, length))});
    rest_.remove_prefix(length);
  }

  void literal(std::string_view text) {
    const bool blank = text.find_first_not_of(' ') == std::string_view::npos;
    marks().push_back({blank ? Mark::Blank : Mark::Literal, std::string(text)});
  }

  /// The character after the symbol that the rest begins with; takes both.
  std::string_view nextCharacter() {
    rest_.remove_prefix(1);
    const std::string_view character = Left(rest_, 1);
    rest_.remove_prefix(character.size());
    return character;
  }

  void next() {
    switch (rest_.front()) {
      case '"':
        return quoted();
      case '[':
        return bracket();
      case '\\':
        return literal(nextCharacter());
      case '_':
        nextCharacter();
        return literal(" ");
      case '*':
        nextCharacter();
        return;
      case '0':
      case '#':
      case '?':
        return placeholders();
      case '.':
        return take(Mark::Point, 1);
      case ',':
        return take(Mark::Comma, 1);
      case '%':
        return take(Mark::Percent, 1);
      case '/':
        return take(Mark::Slash, 1);
      case ':':
        return take(Mark::Colon, 1);
      case '@':
        return take(Mark::Text, 1);
      default:
        if (rest_.front() >= '1' && rest_.front() <= '9') return take(Mark::Digit, 1);
        if (!letters()) character();
    }
  }

  void character() {
    const std::string_view text = Left(rest_, 1);
    literal(text);
    rest_.remove_prefix(text.size());
  }

  void quoted() {
    rest_.remove_prefix(1);
    const std::size_t end = std::min(rest_.find('"'), rest_.size());
    if (end > 0) literal(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
  }

  void placeholders() {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), isPlaceholder);
    take(Mark::Placeholders, static_cast<std::size_t>(end - rest_.begin()));
  }

  void bracket() {
    const std::size_t end = rest_.find(']');
    if (end == std::string_view::npos) {
      literal(rest_);
      rest_ = {};
      return;
    }
    const std::string_view content = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    if (StartsWith(content, "$")) {
      const std::string_view currency = content.substr(1, content.find('-') - 1);
      if (!currency.empty()) literal(currency);
    } else if (!elapsed(content)) {
      if (const int color = colorOf(content)) sections_.back().color = color;
      if (const auto condition = conditionOf(content)) sections_.back().condition = condition;
    }
  }

  bool elapsed(std::string_view content) {
    if (content.empty() || runLength(content) != content.size()) return false;
    const char letter = lower(content[0]);
    if (letter != 'h' && letter != 'm' && letter != 's') return false;
    const Mark::Kind kind = letter == 'h'   ? Mark::ElapsedHours
                            : letter == 'm' ? Mark::ElapsedMinutes
                                            : Mark::ElapsedSeconds;
    marks().push_back({kind, std::string(content)});
    return true;
  }

  bool startsWithWord(std::string_view word) const {
    return EqualsIgnoreCase(rest_.substr(0, word.size()), word);
  }

  /// E+ and E- belong to a number only between placeholders, elsewhere e is a year.
  bool isExponent() {
    if (rest_.size() < 3 || (rest_[1] != '+' && rest_[1] != '-') || !isPlaceholder(rest_[2])) return false;
    if (marks().empty()) return false;
    const Mark::Kind before = marks().back().kind;
    return before == Mark::Placeholders || before == Mark::Point;
  }

  bool letters() {
    constexpr std::string_view ChineseHalves = "上午/下午";
    if (StartsWith(rest_, ChineseHalves)) return take(Mark::HalfOfDay, ChineseHalves.size()), true;
    const std::size_t length = runLength(rest_);
    switch (lower(rest_.front())) {
      case 'g':
        if (startsWithWord("General")) return take(Mark::General, 7), true;
        return take(Mark::Era, length), true;
      case 'a':
        if (startsWithWord("AM/PM")) return take(Mark::HalfOfDay, 5), true;
        if (startsWithWord("A/P")) return take(Mark::HalfOfDay, 3), true;
        if (length < 3) return false;
        return take(Mark::Weekday, length), true;
      case 'e':
        if (isExponent()) return take(Mark::Exponent, 2), true;
        return take(Mark::Year, length), true;
      case 'b':
        if (rest_.size() > 1 && (rest_[1] == '1' || rest_[1] == '2')) return take(Mark::Calendar, 2), true;
        return take(Mark::BuddhistYear, length), true;
      case 'y':
        return take(Mark::Year, length), true;
      case 'm':
        return take(Mark::Month, length), true;
      case 'd':
        return take(Mark::Day, length), true;
      case 'h':
        return take(Mark::Hour, length), true;
      case 's':
        return take(Mark::Second, length), true;
      default:
        return false;
    }
  }

  std::string_view rest_;
  std::vector<NumberFormatMarks> sections_;
};

}  // namespace

bool NumberFormatMarks::has(NumberFormatMark::Kind kind) const {
  return std::any_of(marks.begin(), marks.end(), [kind](const Mark& mark) { return mark.kind == kind; });
}

bool NumberFormatMarks::isDateTime() const {
  bool hasDate = false;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    if (marks[i].kind == Mark::Placeholders && !isSecondDecimals(i)) return false;
    if (marks[i].kind >= Mark::Year) hasDate = true;
  }
  return hasDate;
}

bool NumberFormatMarks::isSecondDecimals(std::size_t index) const {
  return index > 0 && marks[index - 1].kind == Mark::Point && marks[index].kind == Mark::Placeholders &&
         marks[index].text.find_first_not_of('0') == std::string::npos;
}

std::vector<NumberFormatMarks> ScanNumberFormat(std::string_view code) { return Scanner(code).scan(); }

}  // namespace basic
