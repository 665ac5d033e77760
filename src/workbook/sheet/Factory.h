#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/excel.h"
#include "host/services.h"
#include "workbook/book/Converter.h"

namespace workbook {

class Opener;

/// Excel automation without Excel: workbooks are read from their files (.xlsx and
/// .xlsm directly, other formats by LibreOffice) and never written. External
/// links are not followed: a formula has the value that was saved with it.
///
/// Of a workbook's sheets only worksheets count; hidden ones are among them. A
/// workbook keeps what it was opened from in memory until nothing of it is held.
class Factory final : public Excel::Factory {
 public:
  /// `translate` turns a path of any system into one of this system, or throws
  /// basic::Error with the reason. The loop lives as long as everything that
  /// comes from here; it runs while something takes long.
  Factory(host::Loop& loop, std::function<std::string(std::string_view)> translate,
          Converter::Options conversion = {});
  ~Factory() override;

  [[nodiscard]] std::shared_ptr<Excel::Application> CreateApplication() override;

 private:
  std::shared_ptr<Opener> opener_;
  std::function<std::string(std::string_view)> translate_;
};

}  // namespace workbook
