#pragma once

#include <string>

#include "web/show/Show.h"

namespace web {

// What comes out of a deck is escaped; HTML of slides is put in as it is.

/// The screen's page with the present state in it: client/screen/screen.html, filled.
std::string screenPage(const ScreenState& state);
/// The page for phones, client/remote/remote.html; the slides come with the stream.
std::string remotePage(const ScreenState& state);
/// The page that tells people how the show does, client/status/status.html; it asks for what it says.
std::string statusPage(const ScreenState& state);

}  // namespace web
