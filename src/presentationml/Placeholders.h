#pragma once

#include <pugixml.hpp>
#include <string_view>

// What stands behind a placeholder: its counterparts on the layout and the master, whose properties it
// takes over (ECMA-376 part 1, 19.3.1.36).

namespace presentationml {

/// The type that a p:ph states, "obj" where it states none.
std::string_view placeholderType(pugi::xml_node ph);

/// The placeholder type of a master that stands for a p:ph of a layout or slide: "title", "body", "dt",
/// "ftr", "sldNum" or "hdr".
std::string_view masterType(pugi::xml_node ph);

/// The layout's shape for a p:ph of a slide, by index; types that a layout has once are found by type,
/// whatever their index. Null for none. `tree` is the layout's p:spTree.
pugi::xml_node layoutCounterpart(pugi::xml_node tree, pugi::xml_node ph);

/// The first shape of that master type. Null for none. `tree` is the master's p:spTree.
pugi::xml_node masterCounterpart(pugi::xml_node tree, std::string_view type);

}  // namespace presentationml
