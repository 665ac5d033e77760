#pragma once

#include "deck/bars/CommandBars.h"
#include "json/Json.h"

namespace app {

/// The bars, menus and context menus that have something on them (docs/desk-protocol.md, bars).
[[nodiscard]] json::Json barsJson(deck::CommandBars& bars);

}  // namespace app
