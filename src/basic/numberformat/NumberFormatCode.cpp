#include "basic/numberformat/NumberFormatCode.h"

#include <algorithm>

#include "basic/numberformat/NumberFormatMarks.h"
#include "basic/numberformat/NumberFormatSections.h"

namespace basic {
namespace {

using Condition = NumberFormatCondition;

/// The last section if it has an @, else the fourth.
bool endsWithText(const std::vector<NumberFormatMarks>& sections) {
  return sections.size() == 4 || sections.back().has(NumberFormatMark::Text);
}

/// Sections without a condition of their own are for positive numbers, negative
/// ones and the rest; of two, the second is for what the first leaves.
void addDefaultConditions(std::vector<NumberFormatSection>& sections) {
  if (sections.size() < 2) return;
  auto& first = sections[0].condition;
  if (!first) first = Condition{sections.size() == 2 ? Condition::GreaterOrEqual : Condition::Greater, 0.0};
  auto& second = sections[1].condition;
  if (!second && sections.size() > 2) second = Condition{Condition::Less, 0.0};
}

bool isNegativeOnly(const std::optional<Condition>& condition) {
  return condition && condition->limit == 0.0 &&
         (condition->relation == Condition::Less || condition->relation == Condition::LessOrEqual);
}

bool leavesNegativeOnly(const std::optional<Condition>& condition) {
  return condition && condition->limit == 0.0 &&
         (condition->relation == Condition::Greater || condition->relation == Condition::GreaterOrEqual);
}

void markSigns(std::vector<NumberFormatSection>& sections) {
  for (NumberFormatSection& section : sections) section.dropsSign = isNegativeOnly(section.condition);
  if (sections.size() == 2 && !sections[1].condition)
    sections[1].dropsSign = leavesNegativeOnly(sections[0].condition);
}

}  // namespace

bool NumberFormatCondition::accepts(double value) const {
  switch (relation) {
    case Less:
      return value < limit;
    case LessOrEqual:
      return value <= limit;
    case Equal:
      return value == limit;
    case NotEqual:
      return value != limit;
    case GreaterOrEqual:
      return value >= limit;
    case Greater:
      return value > limit;
  }
  return false;
}

const NumberFormatSection* NumberFormatCode::sectionFor(double value) const {
  const auto section = std::find_if(numbers.begin(), numbers.end(), [value](const NumberFormatSection& s) {
    return !s.condition || s.condition->accepts(value);
  });
  return section == numbers.end() ? nullptr : &*section;
}

NumberFormatCode ParseNumberFormat(std::string_view code) {
  NumberFormatCode result;
  // An empty code is no empty section, which would hide the value.
  if (code.empty()) return result;
  std::vector<NumberFormatMarks> sections = ScanNumberFormat(code);
  if (endsWithText(sections)) {
    result.text = TextSection(sections.back());
    sections.pop_back();
  }
  for (const NumberFormatMarks& section : sections) result.numbers.push_back(NumberSection(section));
  addDefaultConditions(result.numbers);
  markSigns(result.numbers);
  return result;
}

}  // namespace basic
