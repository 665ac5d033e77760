#pragma once

#include "app/inspect/Finding.h"
#include "deck/objects/Presentation.h"

namespace app {

/// Opens every connection of a deck and finds the links whose connection or column
/// is not there, scroll entries that move nothing, and links to files that are
/// missing. That data have fewer or more rows today than the links show is a note.
Findings checkLinks(deck::Presentation& deck);

}  // namespace app
