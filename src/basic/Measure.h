#pragma once

#include <optional>
#include <string_view>

namespace basic {

// Numbers and lengths as the attributes of DrawingML hold them (ECMA-376 part 1, 20.1.10 and 22.9).

std::string_view withoutXmlBlanks(std::string_view text);

/// A number as XML writes it, of up to 1e12, and nothing else but blanks around it and a sign before it.
std::optional<double> parseNumber(std::string_view text);

/// A length in EMU (914400 an inch): a plain number, or one with the unit that strict files state
/// ("2.5cm"; ECMA-376 part 1, 22.9.2.15).
std::optional<double> parseEmu(std::string_view text);

inline constexpr double EmuPerPoint = 12700;

}  // namespace basic
