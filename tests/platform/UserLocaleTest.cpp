#include "platform/UserLocale.h"

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
      {"%m/%d/%Y", "mm/dd/yyyy"},
      {"%d.%m.%Y", "dd.mm.yyyy"},
      {"%-d. %-m. %Y", "d. m. yyyy"},
      {"%e %b %y", "d mmm yy"},
      {"%A, %d de %B de %Y", "dddd, dd \\d\\e mmmm \\d\\e yyyy"},
      {"%F", "yyyy-mm-dd"},
      {"%D", "mm/dd/yy"},
      {"%Y年%m月%d日", "yyyy年mm月dd日"},
      {"%H:%M:%S", "hh:nn:ss"},
      {"%r", "hh:nn:ss AMPM"},
      {"%l:%M %p %Z", "h:nn AMPM"},
      {"%Od %Ey", "dd yy"},
      {"%T %", "hh:nn:ss"},
      {"\"%R\"", "\\\"hh:nn\\\""},
  };
  for (const auto& c : cases) EXPECT_EQ(picture(c.pattern), c.picture) << c.pattern;
}

TEST(DatePicture, GivesSeparatorsAndShorterForms) {
  EXPECT_EQ(separatorOf("dd.mm.yyyy", "/"), ".");
  EXPECT_EQ(separatorOf("d. m. yyyy", "/"), ". ");
  EXPECT_EQ(separatorOf("yyyy", "/"), "/");
  EXPECT_EQ(withoutSeconds("hh:nn:ss"), "hh:nn");
  EXPECT_EQ(withoutSeconds("hh:nn:ss AMPM"), "hh:nn AMPM");
  EXPECT_EQ(withoutSeconds("hh.nn.ss"), "hh.nn");
  EXPECT_EQ(withoutSeconds("hh時nn分ss秒"), "hh時nn分");
  EXPECT_EQ(longDateFor("dd.mm.yyyy"), "dddd, d mmmm yyyy");
  EXPECT_EQ(longDateFor("mm/dd/yyyy"), "dddd, mmmm d, yyyy");
  EXPECT_EQ(longDateFor("yyyy-mm-dd"), "yyyy mmmm d, dddd");
}

class UserLocaleTest : public Sandbox {
 protected:
  /// Makes a locale of the C library in the sandbox.
  void install(const std::string& name, const std::string& source, const std::string& charset) {
    const std::string command = "localedef --no-archive -i " + source + " -f " + charset + " '" + folder_ +
                                "/" + name + "' >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << "the package `locales` is needed for this test";
    setVariable("LOCPATH", folder_.c_str());
  }
};

TEST_F(UserLocaleTest, IsAmericanEnglishByDefault) {
  const basic::Locale standard;
  for (const char* name : {"", "C", "POSIX", "C.UTF-8", "xx_XX.UTF-8"}) {
    setVariable("LC_ALL", name);
    const basic::Locale locale = readUserLocale();
    EXPECT_EQ(locale.shortDate, standard.shortDate) << name;
    EXPECT_EQ(locale.thousandsSeparator, standard.thousandsSeparator) << name;
    EXPECT_EQ(locale.longTime, standard.longTime) << name;
  }
}

TEST_F(UserLocaleTest, IsThatOfTheEnvironment) {
  install("de_DE.UTF-8", "de_DE", "UTF-8");
  setVariable("LANG", "de_DE.UTF-8");
  const basic::Locale locale = readUserLocale();
  EXPECT_EQ(locale.decimalSeparator, ",");
  EXPECT_EQ(locale.thousandsSeparator, ".");
  EXPECT_EQ(locale.dateSeparator, ".");
  EXPECT_EQ(locale.months[2], "März");
  EXPECT_EQ(locale.days[0], "Sonntag");
  const basic::Date date = basic::DateFrom(2025, 3, 2, 17, 6, 40);
  EXPECT_EQ(basic::Format(date, "c", locale), "02.03.2025 17:06:40");
  EXPECT_EQ(basic::Format(date, "Long Date", locale), "Sonntag, 2 März 2025");
  EXPECT_EQ(basic::Format(date, "Short Time", locale), "17:06");

  setVariable("LC_NUMERIC", "C");
  EXPECT_EQ(readUserLocale().decimalSeparator, ".");
  EXPECT_EQ(readUserLocale().dateSeparator, ".");
}

TEST_F(UserLocaleTest, IsReadFromOtherCharacterSets) {
  install("de_DE.ISO-8859-1", "de_DE", "ISO-8859-1");
  setVariable("LC_TIME", "de_DE.ISO-8859-1");
  EXPECT_EQ(readUserLocale().months[2], "März");
}

}  // namespace
}  // namespace platform
