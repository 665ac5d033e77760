#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string_view>

// Attribute values in the simple types of DrawingML (ECMA-376 part 1, 20.1.10 and
// 22.9). What cannot be read counts as not stated.

namespace render {

/// A number of up to 1e12 and nothing else but blanks around it and a sign before it.
std::optional<double> parseNumber(std::string_view text);

std::optional<double> numberOf(pugi::xml_attribute attribute);
/// A whole number, held within `least` and `most`; `otherwise` when it cannot be read.
int wholeOf(pugi::xml_attribute attribute, int otherwise, int least, int most);
/// A length in EMU; strict files state units ("2.5cm").
std::optional<double> emuOf(pugi::xml_attribute attribute);
/// A share of one: thousandths of a percent or, in strict files, "12.5%".
std::optional<double> shareOf(pugi::xml_attribute attribute);
/// Degrees from 60000ths.
std::optional<double> degreesOf(pugi::xml_attribute attribute);
/// "1", "true", "on", "0", "false" or "off".
std::optional<bool> boolOf(pugi::xml_attribute attribute);

}  // namespace render
