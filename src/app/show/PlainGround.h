#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "web/show/Show.h"

// What the server tells of a stage that no deck is on: screens show a plain ground, never an error.

namespace app::plainGround {

web::ScreenState state(const web::View& view);
/// Of nothing, until a deck is there.
web::View view(std::optional<int> slide, std::string_view shape);
std::string stateJson();

}  // namespace app::plainGround
