#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/player/SynchronousPlace.h"
#include "deck/objects/Presentation.h"
#include "deck/show/SlideShowOptions.h"
#include "platform/EventLoop.h"

namespace app {

/// A deck as it was read from its file, which is not open in any application yet.
struct DeckRead {
  /// Null when it cannot be shown.
  std::shared_ptr<deck::Presentation> deck;
  /// Why not, as a sentence.
  std::string why;
  TimedDeck times;
};

/// Reads the deck in `file`, to be opened as `path`; `show` is how it is going to be shown. What can be read
/// of a damaged one is shown. One whose slides are all hidden cannot be.
DeckRead readDeck(const std::string& file, const std::string& path, const deck::SlideShowOptions& show);

/// Reads decks on threads of its own, so that a large one does not hold up the show.
class DeckReader {
 public:
  explicit DeckReader(platform::EventLoop& loop);
  /// What is being read is told to nobody.
  ~DeckReader();
  DeckReader(const DeckReader&) = delete;
  DeckReader& operator=(const DeckReader&) = delete;

  /// `then` is called from the loop.
  void read(const std::string& file, const std::string& path, const deck::SlideShowOptions& show,
            std::function<void(DeckRead)> then);

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace app
