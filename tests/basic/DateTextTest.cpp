#include <gtest/gtest.h>

#include "Locales.h"
#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Format.h"
#include "support/ErrorOf.h"

namespace basic {
namespace {

using support::errorNumber;
using test::american;
using test::british;
using test::finnish;
using test::german;
using test::korean;

/// What a text means in the year 2026, "" for nothing.
std::string meaning(const char* text, const Locale& locale) {
  const auto date = ParseDate(text, locale, 2026);
  return date ? StoredDate(*date) : "";
}

TEST(CDateTest, ReadsTheFormsThatEveryLocaleShares) {
  const struct {
    const char* date;  // as StoredDate writes it
    std::vector<const char*> texts;
  } cases[] = {
      {"2026-01-05 00:00:00", {"2026-01-05", "2026/01/05", "2026.01.05", "5 Jan 2026", "5-jan-26"}},
      {"2026-01-05 07:08:00", {"2026-1-5T7:08"}},
      {"2026-01-05 10:20:30", {"2026-01-05T10:20:30"}},
      {"2026-01-05 23:59:59", {"2026-01-05 23:59:59.999"}},
      {"2026-01-13 00:00:00", {"2026-13-01"}},
      {"0100-01-01 00:00:00", {"0100-01-01"}},
      {"9999-12-31 23:59:59", {"9999-12-31 23:59:59"}},
      {"2024-02-29 00:00:00", {"2024-02-29"}},
      {"1899-12-30 10:20:00", {"10:20", "10 : 20"}},
      {"1899-12-30 07:08:09", {" 7:8:9 "}},
      {"1899-12-30 17:00:00", {"5 PM", "5pm"}},
      {"1899-12-30 17:30:00", {"5:30 p"}},
      {"1899-12-30 00:00:00", {"12 AM"}},
      {"1899-12-30 00:30:00", {"12:30 am"}},
      {"1899-12-30 12:00:00", {"12 PM"}},
      {"1899-12-30 13:00:00", {"13:00 PM"}},
      {"2029-04-05 00:00:00", {"5 APRIL 29"}},
      {"1930-04-05 00:00:00", {"5 April 30"}},
      {"2026-04-05 00:00:00", {"April 5, 2026", "2026 April 5", "5April2026", "April 5"}},
      {"2026-04-05 17:30:00", {"April 5, 2026 5:30 PM", "5:30 PM, April 5, 2026"}},
      {"2030-04-01 00:00:00", {"April 2030"}},
      {"1931-04-01 00:00:00", {"April 31"}},
      {"2026-05-13 00:00:00", {"13/5/2026", "5/13/2026", "13 5 2026", "13/5", "5-13"}},
      {"2026-05-13 10:20:00", {"10:20 13/5/2026"}},
      {"1999-12-31 00:00:00", {"99/12/31"}},
      {"2026-05-01 00:00:00", {"5/2026", "2026/5"}},
  };
  for (const Locale& locale : {american(), british(), german(), finnish(), korean()}) {
    for (const auto& [date, texts] : cases) {
      for (const char* text : texts)
        EXPECT_EQ(meaning(text, locale), date) << text << " in " << locale.shortDate;
    }
  }
}

TEST(CDateTest, FollowsTheOrderOfTheShortDate) {
  const struct {
    const char* text;
    const char* american;
    const char* british;
    const char* korean;
  } cases[] = {
      {"3/4/2026", "2026-03-04", "2026-04-03", "2026-03-04"},
      {"3.4.2026", "2026-03-04", "2026-04-03", "2026-03-04"},
      {"3-4-05", "2005-03-04", "2005-04-03", "2003-04-05"},
      {"3/4", "2026-03-04", "2026-04-03", "2026-03-04"},
      {"26/12/31", "1931-12-26", "1931-12-26", "2026-12-31"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(meaning(c.text, american()).substr(0, 10), c.american) << c.text;
    EXPECT_EQ(meaning(c.text, british()).substr(0, 10), c.british) << c.text;
    EXPECT_EQ(meaning(c.text, german()).substr(0, 10), c.british) << c.text;
    EXPECT_EQ(meaning(c.text, korean()).substr(0, 10), c.korean) << c.text;
  }
}

TEST(CDateTest, KnowsTheNamesAndSeparatorsOfTheUser) {
  const struct {
    const char* text;
    Locale locale;
    const char* date;
  } cases[] = {
      {"5. März 2026", german(), "2026-03-05 00:00:00"},
      {"5. MÄRZ 2026", german(), "2026-03-05 00:00:00"},
      {"5. Dez. 2026", german(), "2026-12-05 00:00:00"},
      {"5 Dec 2026", german(), "2026-12-05 00:00:00"},
      {"5.1.", german(), "2026-01-05 00:00:00"},
      {"5.1.2026 5.06.07", finnish(), "2026-01-05 05:06:07"},
      {"5.1.2026 5:06", finnish(), "2026-01-05 05:06:00"},
      {"20.30.45", finnish(), "1899-12-30 20:30:45"},
      {"10.11.12", finnish(), "2012-11-10 00:00:00"},
      {"2026-01-05 오후 5:06:07", korean(), "2026-01-05 17:06:07"},
      {"오전 12:06", korean(), "1899-12-30 00:06:00"},
      {"5 Dez 2026", american(), ""},
  };
  for (const auto& c : cases) EXPECT_EQ(meaning(c.text, c.locale), c.date) << c.text;
}

TEST(CDateTest, RefusesWhatIsNoDate) {
  std::vector<std::string> texts{"",        " ",    "x",       "tomorrow",    "/",      "1/",     "/1/2",
                                 "1//2",    "1/2/", "1/2/3/4", "1,2,2026",    "24:00",  "10:60",  "10:20:60",
                                 "10:",     ":20",  "10:20:",  "10:20:30:40", "010:20", "13 AM",  "PM",
                                 "5 PM AM", "AM 5", "Jan",     "Janus 5",     "T10:00", ", 10:00"};
  for (const char* text : {"30/2/2026", "2026-02-29", "1900-02-29", "0099-01-01", "10000-01-01", "1/1/02026",
                           "13/13/2026", "31 Feb 2026", "Jan Feb 2026", "5 Jan 2026 6", "2026-01-05T",
                           "5/1/26T10:00", "10:20:30. 5", "10:20:30 .5", "1/1/4294967297"})
    texts.emplace_back(text);
  for (const char* text : {"Monday, January 5, 2026", "1 Jan 2 10:00 2026", "2026-01-05T10:00Z",
                           "2026-01-05 10:00:00.", "2026-01-05 10:00 x", "99999999999999999999/1/1",
                           "5 Jan 2026\xFF", "1-2-3-4-5-6-7-8-9-1-2-3-4-5-6-7-8-9"})
    texts.emplace_back(text);
  for (const Locale& locale : {american(), british(), german(), korean()}) {
    for (const std::string& text : texts) {
      SCOPED_TRACE(text + " in " + locale.shortDate);
      EXPECT_EQ(meaning(text.c_str(), locale), "");
      EXPECT_TRUE(errorNumber([&] { CDate(text, locale); }) == 13 || text == "1,2,2026");
    }
  }
}

TEST(CDateTest, TakesANumberForASerial) {
  EXPECT_EQ(CDate("1.5", american()).serial, 1.5);
  EXPECT_EQ(CDate("1,5", german()).serial, 1.5);
  EXPECT_EQ(Split(CDate("1.5", german())).month, 5);
  EXPECT_EQ(CDate(" -1.25 ", american()).serial, -1.25);
  EXPECT_EQ(CDate("46,000", american()).serial, 46000);
  EXPECT_EQ(CDate("20260", american()).serial, 20260);
  for (const char* beyond : {"2958466", "20260105", "-657435"}) {
    EXPECT_EQ(errorNumber([&] { CDate(beyond, american()); }), 6) << beyond;
  }
}

TEST(CDateTest, ReadsBackWhatCStrAndStoredDateWrite) {
  for (const Locale& locale : {american(), british(), german(), finnish(), korean()}) {
    // An odd step meets every time of the day, before and after the zero date.
    for (double serial = -657434; serial < 2958465; serial += 487.2037) {
      const Date date{serial};
      ASSERT_EQ(StoredDate(CDate(StoredDate(date), locale)), StoredDate(date)) << locale.shortDate;
      const std::string text = CStr(date, locale);
      ASSERT_EQ(CStr(CDate(text, locale), locale), text) << locale.shortDate;
    }
  }
}

}  // namespace
}  // namespace basic
