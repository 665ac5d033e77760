#pragma once

#include <string>
#include <vector>

#include "app/inspect/Finding.h"
#include "app/inspect/SourceLook.h"
#include "deck/objects/Presentation.h"

namespace app {

/// Opens every connection of a deck and finds the links whose connection or column
/// is not there, scroll entries that move nothing, and links to files that are
/// missing. That data have fewer or more rows today than the links show is a note.
Findings checkLinks(deck::Presentation& deck);

/// A connection of the deck, as it was found.
struct CheckedSource {
  std::string number;
  std::string description;
  SourceLook look;
  /// Nothing is known of it yet: what depends on its data is left out.
  bool isUnknown = false;
};
/// The same by what is known of the connections already; opens none.
Findings checkLinks(deck::Presentation& deck, const std::vector<CheckedSource>& sources);

}  // namespace app
