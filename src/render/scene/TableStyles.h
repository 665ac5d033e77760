#pragma once

#include <pugixml.hpp>
#include <string_view>

namespace render {

/// The a:tblStyle of a style that presentation programs know by its id alone, without a
/// definition in the deck (74 of them). A null node for others.
pugi::xml_node builtInTableStyle(std::string_view id);

}  // namespace render
