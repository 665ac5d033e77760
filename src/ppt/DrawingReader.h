#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ppt/Deck.h"
#include "ppt/Records.h"

namespace ppt {

/// The string tags of a presentation's, a slide's or a shape's record of tags ([MS-PPT] 2.11.30).
std::vector<Tag> tagsIn(const Record& tags);

/// Takes up what one of the records says that make texts, as they follow one another in a text box and in a
/// slide's outline ([MS-PPT] 2.9.75): a header begins one.
void addText(const Record& record, std::vector<std::string>& texts);

/// What shapes refer to outside of their slide.
struct Surroundings {
  /// The slide's texts that stand in the document's outline, in their order.
  std::vector<std::string> outline;
  /// Programs of objects by the objects' numbers.
  const std::map<std::uint32_t, std::string>& programs;
  /// How many shapes the presentation may still have.
  std::size_t& shapesLeft;
};

/// The shapes of a slide's drawing ([MS-PPT] 2.5.13, [MS-ODRAW] 2.2.13). Deleted ones and the background are
/// none.
std::vector<Shape> shapesIn(const Record& drawing, const Surroundings& surroundings);

}  // namespace ppt
