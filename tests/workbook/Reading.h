#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "support/BookBuilder.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"
#include "workbook/sheet/Factory.h"

namespace workbook::test {

using support::BookBuilder;
using support::errorOf;
using support::TemporaryFolder;

/// Sleeps a moment, as the program's loop does when nothing is ready.
class IdleLoop final : public host::Loop {
 public:
  std::unique_ptr<host::Timer> CreateTimer(std::function<void()>) override { return nullptr; }
  void DoEvents() override {
    ++events;
    if (onEvents) onEvents();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  int events = 0;
  std::function<void()> onEvents;
};

/// Opens workbooks as the system does.
class Desk {
 public:
  explicit Desk(Converter::Options conversion = {})
      : factory_(
            loop, [](auto p) { return std::string(p); }, std::move(conversion)) {}

  std::shared_ptr<Excel::Workbook> open(const std::string& path) {
    return factory_.CreateApplication()->Workbooks()->Open(path, 3, true);
  }
  /// The texts of a range: cells parted by "|", rows by "/".
  std::string texts(const std::string& path, std::string_view sheet, std::string_view range) {
    return textsOf(*open(path)->Sheets()->Item(sheet)->Range(range));
  }
  static std::string textsOf(Excel::Range& range) {
    std::string all;
    std::int32_t row = 0;
    range.ForEach([&](const Excel::Cell& cell) {
      if (row != 0) all += cell.Row() == row ? "|" : "/";
      row = cell.Row();
      all += cell.Text();
      return true;
    });
    return all;
  }

  IdleLoop loop;

 private:
  Factory factory_;
};

/// A workbook of the number 1.
inline BookBuilder oneNumber() {
  BookBuilder book;
  book.rows = "<row><c><v>1</v></c></row>";
  return book;
}

/// Sheet1 of a workbook made for the test.
inline std::string textsOf(const BookBuilder& book, std::string_view range) {
  const TemporaryFolder folder;
  return Desk().texts(folder.write("book.xlsx", book.bytes()), "Sheet1", range);
}

}  // namespace workbook::test
