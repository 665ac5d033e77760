#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "deck/objects/Presentation.h"

namespace deck {

/// Takes the pictures into a presentation to which its backgrounds, masters, layouts, tables, bullets, notes
/// and charts are linked; those of its slides' shapes are Presentation::breakLink's. Relative links lie
/// beside `original`. `requireReadable` is called with each path before it is read; what it throws is why it
/// is not. Where the presentation holds a copy of the picture, that one is shown from now on, without a look
/// at the file. What cannot be read stays linked; answers why, a sentence each.
[[nodiscard]] std::vector<std::string> takePicturesIn(
    Presentation& presentation, const std::string& original,
    const std::function<void(const std::string& path)>& requireReadable);

/// Whether an element of a part refers to the relationship.
[[nodiscard]] bool usesRelationship(pugi::xml_node root, std::string_view id);

}  // namespace deck
