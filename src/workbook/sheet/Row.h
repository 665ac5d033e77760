#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace workbook {

/// A cell as the sheet's part holds it.
struct CellData {
  enum class Kind : std::uint8_t { Blank, Number, Boolean, Error, Text, SharedText };

  Kind kind = Kind::Blank;
  std::uint32_t style = 0;
  double number = 0.0;     // of a Number; 0 or 1 of a Boolean
  std::size_t shared = 0;  // of a SharedText
  std::string_view text;   // of a Text or an Error
};

}  // namespace workbook
