#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace workbook {

/// Appends the text of a string item (`si` of the shared strings, `is` of a
/// cell): its runs joined, phonetic hints left out, cut to the 32,767 characters
/// that a cell holds. White space at the ends of a text counts where xml:space
/// says so. `prefix` is what stands before the element names.
void appendRichText(std::string& to, pugi::xml_node item, std::string_view prefix);

/// Appends all character data of an element, with the escapes of ST_Xstring
/// (ECMA-376 part 1, 22.9.2.19: _x000D_ is a carriage return) resolved.
void appendEscapedText(std::string& to, pugi::xml_node element);

}  // namespace workbook
