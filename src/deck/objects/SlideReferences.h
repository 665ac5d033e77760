#pragma once

#include <cstdint>
#include <pugixml.hpp>

#include "opc/Package.h"

// What else names slides than the list of a presentation: its sections, its custom shows, and what leads to
// a slide from elsewhere.

namespace deck {

/// p14:sectionLst of a presentation ([MS-PPTX] 2.2.16); null without sections.
pugi::xml_node sectionsOf(pugi::xml_node presentation);
/// The slide `id` stands behind the slide `before` in the same section; first in the first one when `before`
/// is 0.
void addToSection(pugi::xml_node sections, std::uint32_t id, std::uint32_t before);
void removeFromSections(pugi::xml_node sections, std::uint32_t id);

/// Removes the relationships of all parts that lead to a slide, and the elements that use them: entries of
/// lists, hyperlinks.
void removeReferencesTo(opc::Package& package, const opc::Part& slide);

}  // namespace deck
