#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "basic/Variant.h"

// The part of the Excel automation that the system uses. Names and behaviour
// follow the object model's own reference (Excel Visual Basic reference);
// collections count from 1. A parent may go before what it handed out. A member
// that fails throws basic::Error. Everything is called on one thread; what takes
// long inside an object lets the host process its messages meanwhile.

namespace Excel {

/// One cell, as long as the visit lasts that hands it out.
class Cell {
 public:
  virtual ~Cell() = default;
  /// From 1.
  [[nodiscard]] virtual std::int32_t Column() const = 0;
  [[nodiscard]] virtual std::int32_t Row() const = 0;
  /// What the cell shows, in the user's settings.
  [[nodiscard]] virtual std::string Text() const = 0;
  /// Empty for a cell without a value.
  [[nodiscard]] virtual basic::Variant Value() const = 0;
  /// The code of its number format ("General", "0.00"), as ECMA-376 part 1, 18.8.31 has it.
  [[nodiscard]] virtual std::string NumberFormat() const = 0;
};

/// A rectangle of cells of a sheet.
class Range {
 public:
  virtual ~Range() = default;
  /// Visits every cell row by row, left to right, empty ones too, until the
  /// visitor answers false.
  virtual void ForEach(const std::function<bool(const Cell&)>& visit) = 0;
};

class Worksheet {
 public:
  virtual ~Worksheet() = default;
  /// As its tab shows it.
  [[nodiscard]] virtual std::string Name() const = 0;
  /// A reference such as "A1:I10", "$A$1:$C$5", "A:C", "B2", or a defined name; an
  /// error for any other text. Whole columns and rows end with the sheet's data.
  [[nodiscard]] virtual std::shared_ptr<Excel::Range> Range(std::string_view reference) = 0;
};

class Sheets {
 public:
  virtual ~Sheets() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// An error out of range.
  [[nodiscard]] virtual std::shared_ptr<Worksheet> Item(std::int32_t index) = 0;
  /// Any case; an error that names the sheets there are when there is none of that name.
  [[nodiscard]] virtual std::shared_ptr<Worksheet> Item(std::string_view name) = 0;
};

/// An open workbook. Letting go of it does not close it, Close does.
class Workbook {
 public:
  virtual ~Workbook() = default;
  [[nodiscard]] virtual std::shared_ptr<Excel::Sheets> Sheets() = 0;
  /// Whether closing may drop what changed.
  virtual void Saved(bool saved) = 0;
  virtual void Close() = 0;
};

class Workbooks {
 public:
  virtual ~Workbooks() = default;
  /// The path is one that Files translates. A file that is held, damaged or of an unknown kind is an error.
  /// `updateLinks` as the object model numbers it (3: update external references).
  [[nodiscard]] virtual std::shared_ptr<Workbook> Open(std::string_view path, std::int32_t updateLinks,
                                                       bool readOnly) = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  /// While true, documents that the user opens go to another instance.
  virtual void IgnoreRemoteRequests(bool ignore) = 0;
  /// Whether the user sees it, who may be at work in it then.
  [[nodiscard]] virtual bool Visible() const = 0;
  /// Ends it; its workbooks are closed unsaved.
  virtual void Quit() = 0;
  [[nodiscard]] virtual std::shared_ptr<Excel::Workbooks> Workbooks() = 0;
};

/// Creates the application, as CreateObject("Excel.Application") does; throws
/// where it is not there.
class Factory {
 public:
  virtual ~Factory() = default;
  [[nodiscard]] virtual std::shared_ptr<Application> CreateApplication() = 0;
};

}  // namespace Excel
