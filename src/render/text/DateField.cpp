#include "render/text/DateField.h"

#include "basic/Format.h"

namespace render {

namespace {

/// Where days have no named halves, a time on a twelve-hour dial needs English ones.
std::string halves(const basic::Locale& locale) { return locale.am.empty() ? " AM/PM" : " AMPM"; }

/// The locale's own time without its seconds.
std::string shortTime(const basic::Locale& locale) {
  return locale.longTime.find("AM") == std::string::npos ? "hh:nn" : "h:nn" + halves(locale);
}

std::optional<std::string> pictureOf(std::string_view type, const basic::Locale& locale) {
  static constexpr std::string_view Family = "datetime";
  if (!type.starts_with(Family)) return {};
  type.remove_prefix(Family.size());
  if (type.empty() || type == "1" || type == "FigureOut") return "ddddd";
  if (type == "2") return "dddddd";
  if (type == "3") return "d mmmm yyyy";
  if (type == "4") return "mmmm d, yyyy";
  if (type == "5") return "d-mmm-yy";
  if (type == "6") return "mmmm yy";
  if (type == "7") return "mmm-yy";
  if (type == "8") return "ddddd " + shortTime(locale);
  if (type == "9") return "ddddd ttttt";
  if (type == "10") return "hh:nn";
  if (type == "11") return "hh:nn:ss";
  if (type == "12") return "h:nn" + halves(locale);
  if (type == "13") return "h:nn:ss" + halves(locale);
  return {};
}

}  // namespace

std::optional<DateField> dateField(std::string_view type, basic::Date now, const basic::Locale& locale) {
  const auto picture = pictureOf(type, locale);
  if (!picture) return {};
  // Minutes or the locale's whole time.
  const bool hasTime = picture->find_first_of("nt") != std::string::npos;
  return DateField{basic::Format(now, *picture, locale), hasTime ? TimeShown::Time : TimeShown::Date};
}

}  // namespace render
