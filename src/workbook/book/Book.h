#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "basic/CellReference.h"
#include "basic/numberformat/NumberFormat.h"
#include "workbook/book/Parts.h"
#include "workbook/book/SharedStrings.h"
#include "workbook/book/Styles.h"

namespace workbook {

/// A sheet in the workbook's list.
struct SheetEntry {
  std::string name;
  /// Empty when the workbook does not say where it is.
  std::string part;
  bool isVisible = true;
  /// Chart sheets and dialog sheets have no cells.
  bool isWorksheet = true;
};

struct DefinedName {
  std::string name;
  std::string refersTo;
  /// The place of the one sheet that it holds for in the list of all sheets.
  std::optional<std::size_t> sheet;
  bool isHidden = false;
};

/// A workbook in memory: what it lists is read at once, texts and styles when
/// they are first needed, sheets by SheetReader.
class Book {
 public:
  /// Throws basic::Error, with the path as the file's name.
  Book(std::string bytes, const std::string& path);

  [[nodiscard]] const Parts& parts() const { return parts_; }
  /// In the order of the workbook.
  [[nodiscard]] const std::vector<SheetEntry>& sheets() const { return sheets_; }
  [[nodiscard]] const std::vector<DefinedName>& names() const { return names_; }
  [[nodiscard]] basic::DateSystem dateSystem() const { return dateSystem_; }
  [[nodiscard]] SharedStrings& strings();
  [[nodiscard]] const Styles& styles();
  /// Empty when there is none.
  [[nodiscard]] const std::string& stylesPart() const { return stylesPart_; }
  [[nodiscard]] const std::string& themePart() const { return themePart_; }

  /// The place of a worksheet by its name in any case. An error that names the
  /// worksheets there are when there is none, and when several have the name.
  [[nodiscard]] std::size_t find(std::string_view name) const;

  /// What a reference or defined name means on a sheet.
  struct Target {
    std::size_t sheet = 0;
    basic::Area area;
  };
  [[nodiscard]] Target resolve(std::size_t sheet, std::string_view reference) const;

 private:
  [[nodiscard]] const DefinedName* findName(std::size_t sheet, std::string_view name) const;

  Parts parts_;
  std::string stylesPart_;
  std::string stringsPart_;
  std::string themePart_;
  std::vector<SheetEntry> sheets_;
  std::vector<DefinedName> names_;
  basic::DateSystem dateSystem_ = basic::DateSystem::From1900;
  std::unique_ptr<SharedStrings> strings_;
  std::unique_ptr<Styles> styles_;
};

}  // namespace workbook
