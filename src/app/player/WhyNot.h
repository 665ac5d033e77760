#pragma once

#include "app/player/DeckCollector.h"
#include "app/player/FolderDeck.h"
#include "basic/Date.h"

namespace app {

/// What a collected deck is at that moment: on, or why not.
[[nodiscard]] FolderDeck judged(const CollectedDeck& deck, basic::Date now);

}  // namespace app
