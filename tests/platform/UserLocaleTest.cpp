#include "platform/UserLocale.h"

#include "basic/Conversion.h"
#include "basic/Format.h"
#include "platform/DatePicture.h"
#include "platform/Sandbox.h"

namespace platform {
namespace {

TEST(DatePicture, IsMadeFromAPattern) {
  struct {
    const char* pattern;
    const char* picture;
  } const cases[] = {
      {"M/d/yy", "m/d/yyyy"},
      {"dd.MM.y", "dd.mm.yyyy"},
      {"y. MM. dd.", "yyyy. mm. dd."},
      {"EEEE, d 'de' MMMM 'de' y", "dddd, d \\d\\e mmmm \\d\\e yyyy"},
      {"cccc d. LLL", "dddd d. mmm"},
      {"EEEE, d MMMM y 'г'.", "dddd, d mmmm yyyy г."},
      {"y年M月d日", "yyyy年m月d日"},
      {"d MMMM G y", "d mmmm yyyy"},
      {"h:mm:ss\u202Fa", "h:nn:ss AMPM"},
      {"HH.mm.ss zzzz", "hh.nn.ss"},
      {"d\u200F/M\u200F/y", "d/m/yyyy"},
      {"H 'o''clock'", "h \\o'\\c\\l\\o\\c\\k"},
      {"d ''yy", "d 'yyyy"},
      {"\"H\"", "\\\"h\\\""},
  };
  for (const auto& c : cases) EXPECT_EQ(picture(c.pattern), c.picture) << c.pattern;
}

TEST(DatePicture, GivesItsSeparator) {
  EXPECT_EQ(separatorOf("dd.mm.yyyy", "/"), ".");
  EXPECT_EQ(separatorOf("d. m. yyyy", "/"), ". ");
  EXPECT_EQ(separatorOf("yyyy", "/"), "/");
}

class UserLocaleTest : public Sandbox {};

TEST_F(UserLocaleTest, IsAmericanEnglishByDefault) {
  setVariable("LANG", "de_DE.UTF-8");
  const basic::Date date = basic::DateFrom(2025, 3, 2, 17, 6, 40);
  for (const char* name : {"C", "POSIX", "C.UTF-8", "xx_XX.UTF-8", "en_US.UTF-8"}) {
    setVariable("LC_ALL", name);
    const basic::Locale locale = readUserLocale();
    for (const char* format : {"c", "Long Date", "ddd d mmm"}) {
      EXPECT_EQ(basic::Format(date, format, locale), basic::Format(date, format, basic::Locale())) << name;
    }
    EXPECT_EQ(basic::Format(date, "c", locale), "3/2/2025 5:06:40 PM") << name;
    EXPECT_EQ(locale.thousandsSeparator + locale.decimalSeparator, ",.") << name;
  }
}

TEST_F(UserLocaleTest, IsThatOfTheEnvironment) {
  const basic::Date date = basic::DateFrom(2025, 3, 2, 17, 6, 40);
  struct {
    const char* name;
    const char* number;  // 1234.5
    const char* general;
    const char* longDate;
    const char* words;
  } const cases[] = {
      {"de_DE.UTF-8", "1.234,5", "02.03.2025 17:06:40", "Sonntag, 2. März 2025", "So 2 Mär"},
      {"de_DE@euro", "1.234,5", "02.03.2025 17:06:40", "Sonntag, 2. März 2025", "So 2 Mär"},
      {"de_CH.ISO-8859-1", "1’234.5", "02.03.2025 17:06:40", "Sonntag, 2. März 2025", "So 2 Mär"},
      {"fr_FR.UTF-8", "1\u202F234,5", "02/03/2025 17:06:40", "dimanche 2 mars 2025", "dim. 2 mars"},
      {"pl_PL.UTF-8", "1\u00A0234,5", "2.03.2025 17:06:40", "niedziela, 2 marca 2025", "niedz. 2 mar"},
      {"fi_FI.UTF-8", "1\u00A0234,5", "2.3.2025 17.06.40", "sunnuntai 2. maaliskuuta 2025", "su 2 maalis"},
      {"ja_JP.UTF-8", "1,234.5", "2025/03/02 17:06:40", "2025年3月2日日曜日", "日 2 3月"},
      {"th_TH.UTF-8", "1,234.5", "2/3/2025 17:06:40", "วันอาทิตย์ที่ 2 มีนาคม 2025", "อา. 2 มี.ค."},
      {"fa_IR.UTF-8", "1,234.5", "2025/3/2 17:06:40", "یکشنبه 2 مارس 2025", "یکشنبه 2 مارس"},
      {"sr_RS@latin", "1.234,5", "2.3.2025. 17:06:40", "nedelja, 2. mart 2025.", "ned 2 mar"},
  };
  for (const auto& c : cases) {
    setVariable("LANG", c.name);
    const basic::Locale locale = readUserLocale();
    EXPECT_EQ("1" + locale.thousandsSeparator + "234" + locale.decimalSeparator + "5", c.number) << c.name;
    EXPECT_EQ(basic::Format(date, "c", locale), c.general) << c.name;
    EXPECT_EQ(basic::Format(date, "Long Date", locale), c.longDate) << c.name;
    EXPECT_EQ(basic::Format(date, "ddd d mmm", locale), c.words) << c.name;
    EXPECT_EQ(basic::CDate(basic::Format(date, "c", locale), locale), date) << c.name;
    EXPECT_EQ(unknownLocaleName(), "") << c.name;
  }
}

TEST_F(UserLocaleTest, MayDifferForNumbersAndDates) {
  setVariable("LANG", "de_DE.UTF-8");
  setVariable("LC_NUMERIC", "C");
  EXPECT_EQ(readUserLocale().decimalSeparator, ".");
  EXPECT_EQ(readUserLocale().dateSeparator, ".");
  setVariable("LC_TIME", "tlh_QO.UTF-8");
  EXPECT_EQ(readUserLocale().days[0], "Sunday");
  EXPECT_EQ(unknownLocaleName(), "tlh_QO.UTF-8");
}

}  // namespace
}  // namespace platform
