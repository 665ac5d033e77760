#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace bench {

/// A database file with the table Stock: ten columns of text, c0 to c9.
class SqliteDatabase {
 public:
  explicit SqliteDatabase(std::int64_t rows);
  ~SqliteDatabase();
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  static constexpr int Columns = 10;
  static constexpr const char* Query = "SELECT * FROM Stock";

  [[nodiscard]] const std::string& file() const { return file_; }

  /// What nobody can undercut: the plain loop of a C program over the same
  /// driver with the same settings, columns bound, nothing kept. Returns the
  /// bytes seen.
  [[nodiscard]] std::size_t bareLoop() const;

 private:
  std::string file_;
};

}  // namespace bench
