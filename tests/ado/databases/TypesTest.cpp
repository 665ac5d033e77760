// Values of every type, as each driver gives them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ado/Recordsets.h"
#include "ado/databases/Servers.h"
#include "basic/Date.h"

namespace ado::test {
namespace {

using basic::Binary;
using basic::Date;
using basic::DateFrom;
using basic::Decimal;
using basic::Null;
using basic::Variant;
using Text = std::string;

const Date Noon2024 = DateFrom(2024, 2, 29, 12, 34, 56);
const Date Day2024 = DateFrom(2024, 2, 29);
const Date Time = DateFrom(1899, 12, 30, 23, 59, 58);

/// What a value is, for comparing kind and content at once.
std::string shown(const Variant& value) {
  static const std::vector<std::string> kinds = {"Empty",  "Null",    "Boolean", "Int32", "Int64",
                                                 "Double", "Decimal", "Date",    "Text",  "Binary"};
  const std::string kind = kinds[value.index()];
  if (basic::IsNull(value)) return kind;
  if (const auto* date = std::get_if<Date>(&value)) return kind + " " + basic::StoredDate(*date);
  return kind + " " + basic::CStr(value);
}

struct Case {
  const char* type;
  const char* literal;
  Variant expected;
};

/// Each value on its own, then all together, so that none depends on its neighbours.
void expectValues(TestServer& server, const std::vector<Case>& cases) {
  std::string columns;
  std::string values;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    columns += (i == 0 ? "" : ", ") + ("c" + std::to_string(i)) + " " + cases[i].type;
    values += (i == 0 ? "" : ", ") + std::string(cases[i].literal);
  }
  server.execute("DROP TABLE IF EXISTS AllTypes");
  server.execute("CREATE TABLE AllTypes (" + columns + ")");
  for (int i = 0; i < 3; ++i) server.execute("INSERT INTO AllTypes VALUES (" + values + ")");
  server.execute("INSERT INTO AllTypes (c0) VALUES (NULL)");

  const auto all = server.opened("SELECT * FROM AllTypes");
  ASSERT_EQ(all->RecordCount(), 4);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const std::string name = "c" + std::to_string(i);
    SCOPED_TRACE(std::string(cases[i].type) + " " + cases[i].literal);
    const auto alone = server.opened("SELECT " + name + " FROM AllTypes");
    EXPECT_EQ(shown(alone->Fields().Item(0).Value()), shown(cases[i].expected));
    all->MoveFirst();
    all->Move(2);
    EXPECT_EQ(shown(all->Fields().Item(name).Value()), shown(cases[i].expected));
    all->MoveLast();
    EXPECT_EQ(shown(all->Fields().Item(name).Value()), "Null");
  }
}

const std::string Long(100'000, 'x');
const std::string LongUnicode = [] {
  std::string text;
  for (int i = 0; i < 30'000; ++i) text += "ä€😀";
  return text;
}();

const std::string LongLiteral = "'" + Long + "'";
const std::string UnicodeLiteral = "'" + LongUnicode + "'";

TEST(Types, OfSqlite) {
  expectValues(sqlite(), {
                             {"INTEGER", "2147483647", std::int32_t{2147483647}},
                             {"INTEGER", "-9223372036854775808", INT64_MIN},
                             {"BIGINT", "7", std::int32_t{7}},
                             {"REAL", "-0.5", -0.5},
                             {"DOUBLE", "1e300", 1e300},
                             {"DATE", "'2024-02-29'", Day2024},
                             {"TIMESTAMP", "'2024-02-29 12:34:56.789'", Noon2024},
                             {"DATETIME", "'2024-02-29T12:34:56'", Noon2024},
                             {"TIME", "'23:59:58'", Time},
                             {"VARCHAR(3)", "'longer than three ä€😀'", Text("longer than three ä€😀")},
                             {"TEXT", LongLiteral.c_str(), Long},
                             {"TEXT", UnicodeLiteral.c_str(), LongUnicode},
                             {"TEXT", "''", Text()},
                             {"BLOB", "x'00FF10'", Binary{0, 0xFF, 0x10}},
                             // Any column holds anything.
                             {"INTEGER", "'n/a'", Text("n/a")},
                             {"INTEGER", "1.5", Decimal{"1.5"}},
                             {"DATE", "'tomorrow'", Text("tomorrow")},
                             {"DATE", "'2024-02-30'", Text("2024-02-30")},
                         });
}

TEST(Types, OfPostgres) {
  expectValues(
      postgres(),
      {
          {"smallint", "-32768", std::int32_t{-32768}},
          {"integer", "2147483647", std::int32_t{2147483647}},
          {"bigint", "9223372036854775807", INT64_MAX},
          {"real", "0.1", 0.1},
          {"double precision", "0.1", 0.1},
          {"numeric(30,10)", "12345678901234567890.0123456789", Decimal{"12345678901234567890.0123456789"}},
          {"numeric", "-0.50", Decimal{"-0.50"}},
          {"numeric", "'NaN'", Text("NaN")},
          {"boolean", "true", true},
          {"boolean", "false", false},
          {"date", "'2024-02-29'", Day2024},
          {"timestamp", "'2024-02-29 12:34:56.789'", Noon2024},
          {"time", "'23:59:58'", Time},
          {"varchar(20)", "'ä€😀'", Text("ä€😀")},
          {"varchar", LongLiteral.c_str(), Long},
          {"text", UnicodeLiteral.c_str(), LongUnicode},
          {"text", "''", Text()},
          {"char(4)", "'ab'", Text("ab  ")},
          {"bytea", "'\\x00ff10'", Binary{0, 0xFF, 0x10}},
          {"uuid", "'6f9619ff-8b86-d011-b42d-00cf4fc964ff'", Text("6F9619FF-8B86-D011-B42D-00CF4FC964FF")},
          {"interval", "'1 day 02:00:00'", Text("1 day 02:00:00")},
          {"json", "'{\"a\": 1}'", Text("{\"a\": 1}")},
      });
}

TEST(Types, OfMaria) {
  expectValues(maria(), {
                            {"tinyint", "-128", std::int32_t{-128}},
                            {"int", "2147483647", std::int32_t{2147483647}},
                            {"int unsigned", "4294967295", std::int64_t{4294967295}},
                            {"bigint", "-9223372036854775808", INT64_MIN},
                            {"bigint unsigned", "18446744073709551615", Decimal{"18446744073709551615"}},
                            {"float", "0.1", 0.1},
                            {"double", "0.1", 0.1},
                            {"decimal(30,10)", "12345678901234567890.0123456789",
                             Decimal{"12345678901234567890.0123456789"}},
                            {"bit(1)", "1", true},
                            {"date", "'2024-02-29'", Day2024},
                            {"datetime", "'2024-02-29 12:34:56'", Noon2024},
                            {"time", "'23:59:58'", Time},
                            {"varchar(20)", "'ä€😀'", Text("ä€😀")},
                            {"longtext", LongLiteral.c_str(), Long},
                            {"longtext", UnicodeLiteral.c_str(), LongUnicode},
                            {"text", "''", Text()},
                            {"varbinary(10)", "x'00FF10'", Binary{0, 0xFF, 0x10}},
                            {"blob", "x'00FF10'", Binary{0, 0xFF, 0x10}},
                        });
}

}  // namespace
}  // namespace ado::test
