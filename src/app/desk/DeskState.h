#pragma once

#include "app/desk/DeskSlides.h"
#include "app/desk/DeskSources.h"
#include "app/desk/DeskWindow.h"
#include "app/desk/OpenDeck.h"
#include "json/Json.h"

namespace app {

// What windows are told of the deck, its slides and its connections: values of the state's keys as
// docs/desk-protocol.md has them.

/// slides
[[nodiscard]] json::Json slidesJson(OpenDeck& open);
/// slide, without its markup; null in a deck without slides.
[[nodiscard]] json::Json slideJson(OpenDeck& open, int slide);
/// selection
[[nodiscard]] json::Json selectionJson(const DeskSlides& slides, const DeskWindow& window);
/// connections
[[nodiscard]] json::Json connectionsJson(const DeskSlides& slides, const DeskSources& sources);
/// data
[[nodiscard]] json::Json dataJson(const DeskSources& sources);
/// used
[[nodiscard]] json::Json usedJson(const DeskSlides& slides, int slide);
/// uses
[[nodiscard]] json::Json usesJson(const DeskSlides& slides);

}  // namespace app
