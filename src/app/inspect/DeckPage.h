#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/wiring/DrawnDeck.h"
#include "deck/objects/Presentation.h"

namespace app {

/// Slides of an open deck as a page.
struct DeckPage {
  /// Needs nothing beside it; see StandalonePage.
  std::string html;
  // See render::SlidePage.
  std::vector<std::string> problems;
  std::vector<render::UsedFont> fonts;
};

/// The slide as it is now, its pictures converted; `above` is HTML that lies over it.
DeckPage drawPage(const deck::Presentation& deck, DrawnDeck& drawn, int slide, std::string_view above = {});

/// Slides as they are now, in this order, for a printer: a sheet each, as large as a slide.
DeckPage drawSheets(const deck::Presentation& deck, DrawnDeck& drawn, const std::vector<int>& slides);

/// Waits for the conversion of pictures. Whether pictures were missing that are there now.
bool finishConversions(DrawnDeck& drawn);

}  // namespace app
