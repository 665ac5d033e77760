#pragma once

#include <string>

#include "model/modDistributionTags.h"

namespace app {

/// For whom and when a deck is, as its own tags say.
using DeckTags = LF2000::modDistributionTags::Audience;

/// Reads the tags of a deck's file, and looks whether the deck is whole: every part of it is read once.
/// Throws basic::Error, which calls the deck by `name`. Any thread may call it.
[[nodiscard]] DeckTags readDeckTags(const std::string& file, const std::string& name);

}  // namespace app
