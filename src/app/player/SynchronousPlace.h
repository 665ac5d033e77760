#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace app {

/// A slide of a deck, and how long it is on.
struct TimedSlide {
  /// In the course of the deck's show, from 0.
  std::size_t place = 0;
  /// Index in the presentation, from 1.
  std::int32_t slide = 1;
  std::int64_t milliseconds = 0;

  friend bool operator==(const TimedSlide&, const TimedSlide&) = default;
};

/// What of a deck is counted: the slides that its author did not hide. Those that hide for want of data keep
/// their time, as only the player that shows the deck knows of them; the next slide stands in.
using TimedDeck = std::vector<TimedSlide>;

/// Where all players stand that show the same decks.
struct SynchronousPlace {
  /// Among the decks, from 0.
  std::size_t deck = 0;
  TimedSlide slide;
  /// Milliseconds until the next slide, at least 1.
  std::int64_t remaining = 1;
};

/// The place of a loop over the decks that began with the year 1970 and has never stopped. `now` is in
/// milliseconds since then, UTC, so that summer time moves nobody. Nothing when no slide takes any time.
std::optional<SynchronousPlace> synchronousPlace(const std::vector<TimedDeck>& decks, std::int64_t now);

}  // namespace app
