#pragma once

#include <string>

#include "web/show/Show.h"

namespace web {

/// The screen's page with the present picture in it: client/screen.html, filled.
std::string screenPage(const Picture& picture);
/// The page for phones: client/remote.html, likewise.
std::string remotePage(const Picture& picture);

}  // namespace web
