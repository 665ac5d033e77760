#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>

#include "workbook/book/Parts.h"

namespace workbook {

/// 0xRRGGBB.
using Rgb = std::uint32_t;

/// The colours of a workbook (ECMA-376 part 1, 18.8.3 and 18.8.27).
class Palette {
 public:
  /// Without a theme its colours are the usual ones.
  Palette(const Parts& parts, const std::string& themePart);

  /// What a colour element (`color`, `fgColor`, ...) stands for; nothing for an
  /// automatic or missing one and for what cannot be read.
  [[nodiscard]] std::optional<Rgb> read(pugi::xml_node color) const;
  /// By its index, from 0 to 63.
  [[nodiscard]] static std::optional<Rgb> indexed(std::uint32_t index);

 private:
  static constexpr std::size_t ThemeColors = 12;
  /// In the order in which cells count them: light before dark.
  std::array<Rgb, ThemeColors> theme_;
};

}  // namespace workbook
