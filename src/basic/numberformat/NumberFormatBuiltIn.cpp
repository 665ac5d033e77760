#include <array>

#include "basic/numberformat/NumberFormat.h"

namespace basic {
namespace {

struct BuiltIn {
  int number;
  const char* code;
};

constexpr std::array<BuiltIn, 38> BuiltIns = {{
    {0, "General"},
    {1, "0"},
    {2, "0.00"},
    {3, "#,##0"},
    {4, "#,##0.00"},
    {5, R"("$"#,##0_);\("$"#,##0\))"},
    {6, R"("$"#,##0_);[Red]\("$"#,##0\))"},
    {7, R"("$"#,##0.00_);\("$"#,##0.00\))"},
    {8, R"("$"#,##0.00_);[Red]\("$"#,##0.00\))"},
    {9, "0%"},
    {10, "0.00%"},
    {11, "0.00E+00"},
    {12, "# ?/?"},
    {13, "# ?\?/??"},
    {15, "d-mmm-yy"},
    {16, "d-mmm"},
    {17, "mmm-yy"},
    {18, "h:mm AM/PM"},
    {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},
    {21, "h:mm:ss"},
    {23, "General"},
    {24, "General"},
    {25, "General"},
    {26, "General"},
    {37, "#,##0 ;(#,##0)"},
    {38, "#,##0 ;[Red](#,##0)"},
    {39, "#,##0.00;(#,##0.00)"},
    {40, "#,##0.00;[Red](#,##0.00)"},
    {41, R"(_(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_))"},
    {42, R"(_("$"* #,##0_);_("$"* \(#,##0\);_("$"* "-"_);_(@_))"},
    {43, R"(_(* #,##0.00_);_(* \(#,##0.00\);_(* "-"??_);_(@_))"},
    {44, R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))"},
    {45, "mm:ss"},
    {46, "[h]:mm:ss"},
    {47, "mmss.0"},
    {48, "##0.0E+0"},
    {49, "@"},
}};

}  // namespace

std::optional<std::string> BuiltInNumberFormat(int number, const Locale& locale) {
  for (const BuiltIn& builtIn : BuiltIns) {
    if (builtIn.number == number) return builtIn.code;
  }
  if (number == 22) return locale.shortDate + " h:mm";
  if (number >= 32 && number <= 35) return "h:mm:ss";
  const bool isDate = number == 14 || (number >= 27 && number <= 36) || (number >= 50 && number <= 58);
  if (isDate) return locale.shortDate;
  return std::nullopt;
}

}  // namespace basic
