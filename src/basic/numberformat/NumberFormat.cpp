#include "basic/numberformat/NumberFormat.h"

#include <cmath>

#include "basic/numberformat/NumberFormatCode.h"
#include "basic/numberformat/NumberFormatDigits.h"
#include "basic/numberformat/NumberFormatWriter.h"

namespace basic {
namespace {

using Section = NumberFormatSection;
using Token = NumberFormatToken;

/// Literals around a value that is shown as it is.
template <typename Value>
void appendAround(std::string& to, const Section& section, Value value) {
  for (const Token& token : section.tokens) {
    if (token.kind == Token::Literal) {
      to += token.text;
    } else {
      value();
    }
  }
}

void appendNumber(std::string& to, const NumberFormatCode& code, double value, const Locale& locale,
                  DateSystem system) {
  if (!std::isfinite(value)) {
    to += "#NUM!";
    return;
  }
  const Section* section = code.sectionFor(value);
  if (section == nullptr) return AppendGeneral(to, value, locale.decimalSeparator);
  switch (section->kind) {
    case Section::General:
      if (value < 0.0 && !section->dropsSign) to += '-';
      return appendAround(to, *section, [&] { AppendGeneral(to, std::abs(value), locale.decimalSeparator); });
    case Section::DateTime:
      return AppendDateSection(to, *section, value, locale, system);
    case Section::Number:
    case Section::Scientific:
    case Section::Fraction:
      return AppendNumberSection(to, *section, value, locale);
    case Section::Literals:
    case Section::Text:
      return appendAround(to, *section, [] {});
  }
}

void appendText(std::string& to, const NumberFormatCode& code, std::string_view text) {
  if (!code.text) {
    to += text;
  } else {
    appendAround(to, *code.text, [&] { to += text; });
  }
}

}  // namespace

NumberFormat::NumberFormat() : NumberFormat(std::string_view()) {}

NumberFormat::NumberFormat(std::string_view code)
    : code_(std::make_shared<const NumberFormatCode>(ParseNumberFormat(code))) {}

bool NumberFormat::isDateTime() const {
  return !code_->numbers.empty() && code_->numbers.front().kind == Section::DateTime;
}

int NumberFormat::color(const CellValue& value) const {
  if (const double* number = std::get_if<double>(&value)) {
    const Section* section = code_->sectionFor(*number);
    return section == nullptr ? 0 : section->color;
  }
  if (!std::holds_alternative<std::string_view>(value)) return 0;
  return code_->text ? code_->text->color : 0;
}

void AppendFormatted(std::string& to, const NumberFormat& format, const CellValue& value,
                     const Locale& locale, DateSystem system) {
  if (const double* number = std::get_if<double>(&value)) {
    appendNumber(to, *format.code_, *number, locale, system);
  } else if (const auto* text = std::get_if<std::string_view>(&value)) {
    appendText(to, *format.code_, *text);
  } else if (const bool* truth = std::get_if<bool>(&value)) {
    to += *truth ? "TRUE" : "FALSE";
  } else {
    to += std::get<CellError>(value).text;
  }
}

std::string FormatNumber(const NumberFormat& format, const CellValue& value, const Locale& locale,
                         DateSystem system) {
  std::string text;
  AppendFormatted(text, format, value, locale, system);
  return text;
}

}  // namespace basic
