#pragma once

#include <memory>
#include <string>

#include "host/services.h"
#include "workbook/book/Book.h"
#include "workbook/book/Converter.h"

namespace workbook {

/// Opens workbooks of every format: .xlsx and .xlsm itself, others by LibreOffice.
class Opener {
 public:
  explicit Opener(host::Loop& loop, Converter::Options conversion = {})
      : loop_(loop), converter_(loop, std::move(conversion)) {}

  /// `path` is one of this system. Throws basic::Error with the path and the
  /// reason. The loop may run meanwhile.
  std::shared_ptr<Book> open(const std::string& path);

  [[nodiscard]] host::Loop& loop() { return loop_; }

 private:
  host::Loop& loop_;
  Converter converter_;
};

}  // namespace workbook
