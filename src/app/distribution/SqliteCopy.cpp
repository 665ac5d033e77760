#include "app/distribution/SqliteCopy.h"

#include <sqlite3.h>

#include <memory>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"

namespace app {

bool isSqlite(std::string_view bytes) {
  // https://www.sqlite.org/fileformat2.html, 1.3
  constexpr std::string_view Magic{"SQLite format 3\0", 16};
  return bytes.starts_with(Magic);
}

std::string sqliteCopy(const std::string& path) {
  constexpr int Patience = 3000;  // ms
  sqlite3* opened = nullptr;
  const int answer = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
  const auto failed = [&] {
    fail(basic::InQuotes(path) + " cannot be copied: " + (opened ? sqlite3_errmsg(opened) : "out of memory") +
         ".");
  };
  if (answer != SQLITE_OK) failed();
  sqlite3_busy_timeout(opened, Patience);
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
      sqlite3_serialize(opened, "main", &size, 0), sqlite3_free);
  if (!bytes) failed();
  std::string copy(reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size));
  // The file format versions: without a write-ahead log it can be read where nothing may be written.
  constexpr std::size_t WriteVersion = 18;
  constexpr std::size_t ReadVersion = 19;
  if (copy.size() > ReadVersion) copy[WriteVersion] = copy[ReadVersion] = 1;
  return copy;
}

}  // namespace app
