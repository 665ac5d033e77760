#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "Locales.h"
#include "basic/Conversion.h"
#include "support/ErrorOf.h"

namespace basic {
namespace {

using support::errorNumber;
using support::errorOf;
using test::american;
using test::finnish;
using test::german;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(CDblTest, ReadsWhatTheLanguageCallsANumber) {
  const struct {
    Locale locale;
    double value;
    std::vector<const char*> texts;
  } cases[] = {
      {american(), 42, {"42"}},
      {american(), -42, {" \t-42 \r\n", "- 42", "42-", "42 -"}},
      {american(), 0.5, {"+.5"}},
      {american(), 5, {"5."}},
      {american(), 2.5, {"25d-1"}},
      {american(), -1234.5, {"(1,234.50)"}},
      {american(), 1234, {"1,2,34"}},
      {american(), 1500, {"1.5e3"}},
      {american(), 1000, {"1E+3"}},
      {american(), 100, {"1D2"}},
      {american(), 1.25, {"00000000000000000000000000000000000001.25"}},
      {american(), 123456789012345678901234567890.0, {"123456789012345678901234567890"}},
      {american(), 1.7976931348623157e308, {"1.7976931348623157E+308"}},
      {american(), 0, {"0e999999999999999999999", "-1E-400", "0.0000001E-99999999999999999999"}},
      {american(), 255, {"&HFF"}},
      {american(), 4294967295.0, {" &hffffffff "}},
      {american(), 15, {"&o17"}},
      {german(), 1234.5, {"1.234,5"}},
      {german(), -0.5, {"-,5"}},
      {finnish(), 1234.5, {"1 234,5"}},
      {finnish(), 1234567.5, {"1\u00A0234 567,5"}},
  };
  for (const auto& [locale, value, texts] : cases) {
    for (const char* text : texts) EXPECT_EQ(CDbl(text, locale), value) << text;
  }
}

TEST(CDblTest, RefusesTheRest) {
  for (const char* text :
       {"",      " ",    ".",   "-",   "()",  "(",     "--1",      "-1-",   "(-1)", "1.2.3",
        "1.2,3", ",1",   "1 2", "1e",  "1e+", "1e5.5", "e5",       "12abc", "inf",  "nan",
        "0x10",  "True", "&H",  "&HG", "&O8", "&H-1",  "1\u00A02", "١"}) {
    EXPECT_EQ(errorNumber([&] { CDbl(text, american()); }), 13) << text;
  }
  for (const char* text : {"1E400", "-1E400", "0.1E310", "1e99999999999", "&H10000000000000000"}) {
    EXPECT_EQ(errorNumber([&] { CDbl(text, american()); }), 6) << text;
  }
  EXPECT_EQ(errorNumber([] { CDbl(std::string_view("1\0", 2), american()); }), 13);
  EXPECT_EQ(errorNumber([] { CDbl(std::string(1000, '9'), american()); }), 6);
}

TEST(CLngTest, RoundsHalfToEvenWithinThirtyTwoBits) {
  const struct {
    const char* text;
    std::int32_t value;
    std::int32_t error;
  } cases[] = {
      {"0.5", 0, 0},
      {"1.5", 2, 0},
      {"2.5", 2, 0},
      {"-2.5", -2, 0},
      {"2.50001", 3, 0},
      {"2147483647.49", 2147483647, 0},
      {"2147483647.5", 0, 6},
      {"-2147483648.5", std::numeric_limits<std::int32_t>::min(), 0},
      {"-2147483649", 0, 6},
      {"&HFFFFFFFF", -1, 0},
      {"&H7fffffff", 2147483647, 0},
      {"&H100000000", 0, 6},
      {" true", -1, 0},
      {"FALSE", 0, 0},
      {"yes", 0, 13},
      {"1E3", 1000, 0},
  };
  for (const auto& c : cases) {
    std::int32_t value = 0;
    EXPECT_EQ(errorNumber([&] { value = CLng(c.text, american()); }), c.error) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
  for (const double value : {Infinity, -Infinity, NotANumber, 1e300}) {
    EXPECT_EQ(errorNumber([&] { CLng(value); }), 6) << value;
  }
}

TEST(CBoolTest, KnowsTheWordsAndNumbers) {
  for (const char* text : {"True", "tRuE", " TRUE ", "-1", "1", "0,5", "&H1"}) {
    EXPECT_TRUE(CBool(text, german())) << text;
  }
  for (const char* text : {"False", "false", "0", "-0", "0,0", "&H0"})
    EXPECT_FALSE(CBool(text, german())) << text;
  for (const char* text : {"", "yes", "T", "Truee"}) {
    EXPECT_EQ(errorNumber([&] { CBool(text, german()); }), 13) << text;
  }
}

TEST(CStrTest, WritesNumbers) {
  const std::pair<double, const char*> cases[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {0.1 + 0.2, "0,3"},
      {-1234.5, "-1234,5"},
      {999999999999999.0, "999999999999999"},
      {1e15, "1E+15"},
      {999999999999999.9, "1E+15"},
      {0.0001, "0,0001"},
      {0.00001, "1E-05"},
      {-1.25e-7, "-1,25E-07"},
      {2.0 / 3.0, "0,666666666666667"},
      {std::numeric_limits<double>::max(), "1,79769313486232E+308"},
      {std::numeric_limits<double>::denorm_min(), "4,94065645841247E-324"},
      {Infinity, "1.#INF"},
      {-Infinity, "-1.#INF"},
      {NotANumber, "-1.#IND"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(CStr(value, german()), text);
}

TEST(CStrTest, WritesNumbersAsTheCLibraryDoesAndReadsThemBack) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    double value = std::bit_cast<double>(random());
    if (i % 2 == 0) value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 120) - 100);
    if (!std::isfinite(value)) continue;
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.15G", value);
    const std::string text = CStr(value, american());
    ASSERT_EQ(text, expected);
    if (std::abs(value) < 1.7976931348623e308) {
      ASSERT_EQ(CDbl(text, american()), std::strtod(expected, nullptr));
    }
  }
}

TEST(CStrTest, WritesEveryKindOfValue) {
  const std::pair<Variant, const char*> cases[] = {
      {Empty{}, ""},
      {true, "True"},
      {false, "False"},
      {std::int32_t{-7}, "-7"},
      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
      {1.5, "1,5"},
      {Decimal{"-12.50"}, "-12,50"},
      {Date{1.5}, "31.12.1899 12:00:00"},
      {std::string("a.b"), "a.b"},
      {Binary{0x00, 0xAB, 0x0F}, "0x00AB0F"},
      {Binary{}, "0x"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(CStr(value, german()), text);

  EXPECT_EQ(errorNumber([] { CStr(Variant(Null{}), german()); }), 13);
  EXPECT_EQ(errorOf([] { CStr(Variant(Null{}), german()); }), "Invalid use of Null");
}

TEST(ErrorTest, CarriesNumberSourceAndStandardText) {
  try {
    Raise(RuntimeError::ObjectVariableNotSet);
  } catch (const Error& error) {
    EXPECT_EQ(error.number, 91);
    EXPECT_EQ(error.source, DefaultSource);
    EXPECT_STREQ(error.what(), "Object variable or With block variable not set");
  }
}

}  // namespace
}  // namespace basic
