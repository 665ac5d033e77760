#pragma once

#include <string>
#include <vector>

#include "model/modSchedule.h"

namespace app {

/// For whom and when a deck is, as its own tags say.
struct DeckTags {
  /// Empty: for every computer.
  std::vector<std::string> computers;
  LF2000::modSchedule::Schedule schedule;

  /// Whether it is for the computer of that name, in any case; a list may have it with the back slashes
  /// before it that a browsing dialog gives.
  [[nodiscard]] bool isFor(std::string_view computer) const;

  friend bool operator==(const DeckTags&, const DeckTags&) = default;
};

/// Reads the tags of a deck's file, and looks whether the deck is whole: every part of it is read once.
/// Throws basic::Error, which calls the deck by `name`. Any thread may call it.
[[nodiscard]] DeckTags readDeckTags(const std::string& file, const std::string& name);

}  // namespace app
