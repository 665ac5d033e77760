#include "app/player/SynchronousPlace.h"

namespace app {

std::optional<SynchronousPlace> synchronousPlace(const std::vector<TimedDeck>& decks, std::int64_t now) {
  std::int64_t cycle = 0;
  for (const TimedDeck& deck : decks) {
    for (const TimedSlide& slide : deck) cycle += slide.milliseconds;
  }
  if (cycle <= 0) return std::nullopt;
  // A clock may stand before 1970.
  std::int64_t left = (now % cycle + cycle) % cycle;
  for (std::size_t deck = 0; deck < decks.size(); ++deck) {
    for (const TimedSlide& slide : decks[deck]) {
      if (left < slide.milliseconds) return SynchronousPlace{deck, slide, slide.milliseconds - left};
      left -= slide.milliseconds;
    }
  }
  return std::nullopt;
}

}  // namespace app
