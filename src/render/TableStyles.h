#pragma once

#include <pugixml.hpp>
#include <string_view>

namespace render {

/// The a:tblStyle of a style that PowerPoint knows without a definition in the deck:
/// Medium Style 2 in all its accents, and the two without style. A null node for others.
pugi::xml_node builtInTableStyle(std::string_view id);

}  // namespace render
