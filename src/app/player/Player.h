#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/player/DeckReader.h"
#include "app/player/FolderDeck.h"
#include "app/show/Programme.h"
#include "app/show/Stage.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/ToldOnce.h"
#include "platform/EventLoop.h"
#include "web/show/Show.h"

namespace app {

/// Shows the decks of a folder by turns, each as a show of its own: the next one is opened while the one
/// before is on, and follows when that has gone through its slides. A deck that is on no longer makes way at
/// once, one that has changed goes on where it stood. What cannot be shown is passed over and told once.
class Player final : private Programme {
 public:
  /// Reads a deck as `show` is going to show it, and tells `then`, in the call or later from the loop.
  using Reader = std::function<void(const FolderDeck& deck, const deck::SlideShowOptions& show,
                                    std::function<void(DeckRead)> then)>;
  struct Options {
    /// `seconds` must be there.
    Stage::Options stage;
    /// Where the show stands follows from the time alone (SynchronousPlace.h).
    bool isSynchronous = false;
    /// The deck whose last slide is shown while there is no other; empty: a plain ground.
    std::string whenEmpty;
    Reader read;
    /// Keeps the files of a deck for as long as somebody holds the answer; null when they are gone.
    std::function<std::shared_ptr<const void>(const FolderDeck&)> keep;
    /// Milliseconds since 1970, UTC.
    std::function<std::int64_t()> now;
  };

  /// The host and the loop outlive it.
  Player(AddInHost& host, platform::EventLoop& loop, Options options);
  ~Player() override;
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  [[nodiscard]] Stage& stage() { return stage_; }
  /// `onEnd` is called once when an operator or shutDown() has ended it.
  void begin(std::function<void()> onEnd);
  /// The decks that there are, in the order of the show; `trouble` is what is wrong with their folder.
  void take(std::vector<FolderDeck> decks, std::string trouble);
  /// Ends it and leaves the last picture standing on the screens.
  void shutDown();

 private:
  /// What was found out about a version of a deck.
  struct Known {
    bool isRead = false;
    /// Why it cannot be shown at all.
    std::string broken;
    /// Why its last turn was passed over.
    std::string passedOver;
    TimedDeck times;
  };
  struct ReadDeck {
    FolderDeck deck;
    std::shared_ptr<deck::Presentation> presentation;
  };
  struct OpenDeck {
    FolderDeck deck;
    std::shared_ptr<deck::Presentation> presentation;
    std::shared_ptr<const void> kept;
  };

  bool wentThrough() override;
  [[nodiscard]] std::optional<std::string> objection() const override;
  [[nodiscard]] web::DecksHealth decks() const override;

  void decideSoon();
  void decide();
  void decideByTurn();
  void decideByTime();
  [[nodiscard]] std::vector<FolderDeck> playable() const;
  [[nodiscard]] FolderDeck following(const std::vector<FolderDeck>& playable) const;
  void noteWhereTurnsStand(const std::vector<FolderDeck>& decks);
  [[nodiscard]] bool areTimesKnown(const std::vector<FolderDeck>& playable);
  /// Whether the deck is open, ready for its show; what is missing for that is under way.
  bool prepare(const FolderDeck& deck);
  void read(const FolderDeck& deck);
  void hasRead(const FolderDeck& deck, DeckRead read);
  void letGoOfPrepared();
  bool show(const deck::SlideShowOptions& how, bool goesOn);
  void passOver(const FolderDeck& deck, const std::string& why);
  void rest();
  bool showFiller();
  [[nodiscard]] deck::SlideShowOptions showOptions() const;
  [[nodiscard]] Stage::Options stageOptions();
  [[nodiscard]] bool isOnShow(const FolderDeck& deck) const;
  [[nodiscard]] web::DeckHealth healthOf(const FolderDeck& deck) const;
  void wakeIn(std::int64_t milliseconds);

  AddInHost& host_;
  platform::EventLoop& loop_;
  Options options_;
  Stage stage_;
  ToldOnce problems_;
  std::function<void()> onEnd_;
  std::vector<FolderDeck> decks_;
  std::string trouble_;
  /// By name and version, as the two below.
  std::map<std::string, Known> known_;
  /// The deck for want of others; nothing unless one is given.
  std::optional<FolderDeck> filler_;
  /// What is being read.
  std::string reading_;
  std::optional<ReadDeck> read_;
  std::optional<OpenDeck> prepared_;
  /// Nothing on a plain ground.
  std::optional<OpenDeck> onShow_;
  /// The deck, by its name, whose turn it was last.
  std::string turn_;
  /// Turns in a row that were passed over.
  std::size_t passed_ = 0;
  /// Nothing could be shown; another try is due later.
  bool isResting_ = false;
  /// The deck on show has gone through its slides.
  bool isThrough_ = false;
  /// Decks that had nothing to show when it was their time, and whose time that was.
  std::set<std::string> absent_;
  std::string timeOf_;
  /// While it is decided by the time: when the slide was due that is on, in milliseconds since 1970.
  std::optional<std::int64_t> due_;
  std::uint64_t changes_ = 0;
  bool isDeciding_ = false;
  bool isAgain_ = false;
  /// Begun, and not over.
  bool isOn_ = false;
  std::unique_ptr<host::Timer> waking_;
  /// Lets what was posted see that this object is gone.
  std::shared_ptr<Player*> self_;
};

}  // namespace app
