#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "deck/objects/Presentation.h"

namespace deck {

/// An object on a slide that is linked to a file or a part of it, as PowerPoint
/// pastes it from a worksheet. Presentation::UpdateLinks tells its listeners when
/// such files are to be read anew (ChangeListener::linksUpdated).
struct LinkedObject {
  std::uint32_t shapeId = 0;
  std::string shapeName;
  /// "Excel.Sheet.12"; empty when the deck does not tell.
  std::string progId;
  /// The source's path as the deck writes it, full ("C:\data\book.xlsx"); a
  /// relative one lies beside the deck. host::Files::LocalPath makes it one of this
  /// system.
  std::string file;
  /// What of the file is shown: "Sheet1!R1C1:R5C3", a name, a chart; empty for the whole.
  std::string item;
};

/// The linked objects of a slide, in drawing order.
std::vector<LinkedObject> linkedObjects(const Presentation& presentation, std::int32_t slideIndex);

}  // namespace deck
