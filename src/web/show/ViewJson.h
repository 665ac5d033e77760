#pragma once

#include <string_view>

#include "json/Json.h"
#include "web/show/Show.h"

namespace web {

/// What a screen looks at, as health and status tell it.
json::Json viewJson(const View& view);
/// "on show", "in turn", "not now" or "refused".
std::string_view wordFor(DeckHealth::State state);

}  // namespace web
