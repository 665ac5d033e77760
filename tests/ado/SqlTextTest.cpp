#include "ado/SqlText.h"

#include <gtest/gtest.h>

namespace ado::test {
namespace {

bool several(const char* database, const char* sql) {
  return holdsSeveralStatements(sql, syntaxOf(database));
}

TEST(SqlTextTest, TellsWhereAStatementEnds) {
  const std::vector<const char*> one = {"",
                                        "SELECT 1",
                                        "SELECT 1;",
                                        "SELECT 1 ; \n; -- that is all; really\n /* ; */",
                                        "SELECT ';', \"a;b\", `c;d` FROM t",
                                        "SELECT 'it''s; fine'",
                                        "SELECT 1 -- ; x",
                                        "SELECT 1 /* ; x",
                                        "SELECT 'open; x"};
  const std::vector<const char*> two = {
      "SELECT 1; DROP TABLE t",      "SELECT 1;DROP TABLE t", ";x", "SELECT ''; x --'", "SELECT 1 -- a\n; x",
      "SELECT 1 /* ' */; x /* ' */", "SELECT \"'\"; x --'"};
  for (const char* database : {"SQLite", "PostgreSQL", "MariaDB", "Microsoft SQL Server", ""}) {
    for (const char* sql : one) EXPECT_FALSE(several(database, sql)) << database << ": " << sql;
    for (const char* sql : two) EXPECT_TRUE(several(database, sql)) << database << ": " << sql;
  }
}

TEST(SqlTextTest, QuotesAsTheDatabaseDoes) {
  const struct {
    const char* database;
    const char* sql;
    bool isSeveral;
  } cases[] = {
      {"SQLite", "SELECT [it's]; x --'", true},
      {"SQLite", "SELECT [a;b]", false},
      {"PostgreSQL", "SELECT ARRAY[']']; x", true},
      {"PostgreSQL", "SELECT a[1], $$ ; $$, $x$ $$ ; $x$", false},
      {"PostgreSQL", "SELECT $x$ $x$; y $x$", true},
      {"PostgreSQL", "SELECT a$b$; x $b$", true},
      {"PostgreSQL", "SELECT E'it\\'s; fine'", false},
      {"PostgreSQL", "SELECT 'C:\\'; x --'", true},
      {"PostgreSQL", "SELECT 1 /* /* */ ; x */", false},
      {"SQLite", "SELECT 1 /* /* */ ; x */", true},
      {"MariaDB", "SELECT 'it\\'s; fine'", false},
      {"SQLite", "SELECT 'C:\\'; x --'", true},
  };
  for (const auto& each : cases) EXPECT_EQ(several(each.database, each.sql), each.isSeveral) << each.sql;
}

}  // namespace
}  // namespace ado::test
