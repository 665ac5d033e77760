#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace deck {

/// The text of a p:txBody: paragraphs separated by CR, line breaks as VT, fields
/// with the text they last showed.
std::string textOf(pugi::xml_node body);

/// Replaces the text. Every run takes the formatting of the first run there was
/// (of the paragraph's end mark, when there was none), every paragraph that of
/// the first paragraph. CR, LF and CR LF begin a paragraph, VT is a line break;
/// what XML cannot hold is left out. Returns whether anything changed.
bool setText(pugi::xml_node body, std::string_view text);

/// A text of one line becomes a field of this type (a:fld, ECMA-376 part 1, 21.1.2.2.4); any other stays.
void makeField(pugi::xml_node body, const std::string& type);

/// Gives a p:sp an empty p:txBody where the schema wants it, and returns it.
pugi::xml_node addTextBody(pugi::xml_node shape);
/// The same for an a:tc.
pugi::xml_node addCellText(pugi::xml_node cell);

}  // namespace deck
