#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "web/show/Show.h"
#include "web/show/WallPart.h"

namespace web {

// What comes out of a deck is escaped; HTML of slides is put in as it is.

/// The screen's page with the present state in it: client/screen/screen.html, filled. `view` is the name of
/// what it looks at (ViewName.h). A screen of a wall shows its part. `isKnown`: looking takes a token.
std::string screenPage(const ScreenState& state, const std::string& view,
                       const std::optional<WallPart>& part = {}, bool isKnown = false);
/// Asks for a token: client/screen/enter.html.
std::string enterPage();
/// Says to people why `part` is none, and how one is written: client/screen/wrong_part.html.
std::string wrongPartPage(const ScreenState& state, std::string_view part);
/// The page for phones, client/remote/remote.html; the slides come with the stream.
std::string remotePage(const ScreenState& state);
/// The page that tells people how the show does, client/status/status.html; it asks for what it says.
std::string statusPage(const ScreenState& state);

}  // namespace web
