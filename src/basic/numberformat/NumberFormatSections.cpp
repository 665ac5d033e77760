#include "basic/numberformat/NumberFormatSections.h"

namespace basic {
namespace {

using Mark = NumberFormatMark;
using Token = NumberFormatToken;

/// Literals around one kind of mark that stands for the whole value.
void parseAround(const std::vector<Mark>& marks, Token::Kind value, NumberFormatSection& section) {
  for (const Mark& mark : marks) {
    if (mark.kind == Mark::General || mark.kind == Mark::Text) {
      section.tokens.push_back({value, 0, {}});
    } else {
      AddLiteral(section, mark.text);
    }
  }
}

}  // namespace

void AddLiteral(NumberFormatSection& section, std::string_view text) {
  if (section.tokens.empty() || section.tokens.back().kind != Token::Literal)
    section.tokens.push_back({Token::Literal, 0, {}});
  section.tokens.back().text += text;
}

NumberFormatSection NumberSection(const NumberFormatMarks& marks) {
  NumberFormatSection section;
  section.color = marks.color;
  section.condition = marks.condition;
  if (marks.has(Mark::General) || marks.has(Mark::Text)) {
    section.kind = NumberFormatSection::General;
    parseAround(marks.marks, Token::General, section);
  } else if (marks.isDateTime()) {
    section.kind = NumberFormatSection::DateTime;
    ParseDateMarks(marks, section);
  } else if (!ParseFractionMarks(marks.marks, section)) {
    ParseNumberMarks(marks.marks, section);
  }
  return section;
}

NumberFormatSection TextSection(const NumberFormatMarks& marks) {
  NumberFormatSection section;
  section.kind = NumberFormatSection::Text;
  section.color = marks.color;
  parseAround(marks.marks, Token::Text, section);
  return section;
}

}  // namespace basic
