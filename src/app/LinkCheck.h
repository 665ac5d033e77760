#pragma once

#include "app/Finding.h"
#include "deck/Presentation.h"

namespace app {

/// Opens every connection of a deck and finds the links whose connection, column
/// or row is not there.
Findings checkLinks(deck::Presentation& deck);

}  // namespace app
