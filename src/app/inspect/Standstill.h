#pragma once

#include <optional>
#include <string>

#include "deck/show/ShowCourse.h"

namespace app {

/// What keeps a looping show from moving when nobody steers it, and what helps, as a sentence; nothing when
/// it goes through all its slides, has one alone, or does not loop.
std::optional<std::string> standstillOf(const deck::ShowCourse& course);

}  // namespace app
