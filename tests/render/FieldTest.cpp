#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/html/SlideRenderer.h"
#include "render/text/DateField.h"
#include "support/DeckBuilder.h"

namespace render {
namespace {

using support::DeckBuilder;
using support::shapeWithParagraphs;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

basic::Locale german() {
  basic::Locale locale;
  locale.dateSeparator = ".";
  locale.shortDate = "dd.mm.yyyy";
  locale.longDate = "dddd, d. mmmm yyyy";
  locale.longTime = "hh:nn:ss";
  locale.am = locale.pm = "";
  locale.months[2] = "März";
  locale.shortMonths[2] = "Mär";
  locale.days[3] = "Mittwoch";
  return locale;
}

TEST(Field, DatesAndTimesAreWrittenByTypeAndLocale) {
  const auto now = basic::DateFrom(2026, 3, 4, 16, 5, 9);
  const struct {
    const char* type;
    const char* english;
    const char* german;
    TimeShown shown = TimeShown::Date;
  } cases[] = {{"datetime", "3/4/2026", "04.03.2026"},
               {"datetimeFigureOut", "3/4/2026", "04.03.2026"},
               {"datetime1", "3/4/2026", "04.03.2026"},
               {"datetime2", "Wednesday, March 4, 2026", "Mittwoch, 4. März 2026"},
               {"datetime3", "4 March 2026", "4 März 2026"},
               {"datetime4", "March 4, 2026", "März 4, 2026"},
               {"datetime5", "4-Mar-26", "4-Mär-26"},
               {"datetime6", "March 26", "März 26"},
               {"datetime7", "Mar-26", "Mär-26"},
               {"datetime8", "3/4/2026 4:05 PM", "04.03.2026 16:05", TimeShown::Time},
               {"datetime9", "3/4/2026 4:05:09 PM", "04.03.2026 16:05:09", TimeShown::Time},
               {"datetime10", "16:05", "16:05", TimeShown::Time},
               {"datetime11", "16:05:09", "16:05:09", TimeShown::Time},
               {"datetime12", "4:05 PM", "4:05 PM", TimeShown::Time},
               {"datetime13", "4:05:09 PM", "4:05:09 PM", TimeShown::Time}};
  for (const auto& each : cases) {
    const auto english = dateField(each.type, now, basic::Locale{});
    const auto german = dateField(each.type, now, render::german());
    ASSERT_TRUE(english && german) << each.type;
    EXPECT_EQ(english->text, each.english) << each.type;
    EXPECT_EQ(german->text, each.german) << each.type;
    EXPECT_EQ(english->shown, each.shown) << each.type;
    EXPECT_EQ(german->shown, each.shown) << each.type;
  }
  for (const char* type : {"", "slidenum", "datetime14", "datetime01", "xdatetime1"}) {
    EXPECT_FALSE(dateField(type, now, basic::Locale{})) << type;
  }
}

std::string field(const std::string& type) {
  return "<a:p><a:fld id=\"{1}\" type=\"" + type + "\"><a:t>stored</a:t></a:fld></a:p>";
}

TEST(Field, SlidesAndWhatLiesBehindThemFollowTheClock) {
  DeckBuilder builder;
  builder.addSlide(shapeWithParagraphs(2, "Date", field("datetime3")));
  builder.addSlide(shapeWithParagraphs(2, "Fixed", "<a:p><a:r><a:t>1 May 2001</a:t></a:r></a:p>"));
  builder.slideAttributes(2, "showMasterSp=\"0\"");
  builder.layout("<p:spTree>" + shapeWithParagraphs(2, "Time", field("datetime10")) + "</p:spTree>");
  const auto package = builder.package();
  basic::Date now = basic::DateFrom(2026, 12, 31, 23, 59);
  SlideRenderer renderer(*package,
                         {.assetPrefix = "", .isLive = {}, .converter = nullptr, .now = [&] { return now; }});
  auto page = renderer.slide(1);
  EXPECT_THAT(page.html, AllOf(HasSubstr("31 December 2026"), HasSubstr("23:59")));
  EXPECT_EQ(page.timeShown, TimeShown::Time);
  now = basic::DateFrom(2027, 1, 1);
  page = renderer.slide(1);
  EXPECT_THAT(page.html, AllOf(HasSubstr("1 January 2027"), HasSubstr("00:00"), Not(HasSubstr("23:59"))));
  EXPECT_THAT(renderer.shape(1, 2), HasSubstr("1 January 2027"));

  const auto fixed = renderer.slide(2);
  EXPECT_THAT(fixed.html, HasSubstr("1 May 2001"));
  EXPECT_EQ(fixed.timeShown, TimeShown::None);

  SlideRenderer withoutClock(*package);
  page = withoutClock.slide(1);
  EXPECT_THAT(page.html, HasSubstr("stored"));
  EXPECT_EQ(page.timeShown, TimeShown::None);
}

}  // namespace
}  // namespace render
