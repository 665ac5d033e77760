#pragma once

#include "app/inspect/Finding.h"
#include "deck/objects/Presentation.h"

namespace app {

/// Opens every connection of a deck and finds the links whose connection, column
/// or row is not there, scroll entries that move nothing, and links to files that
/// are missing.
Findings checkLinks(deck::Presentation& deck);

}  // namespace app
