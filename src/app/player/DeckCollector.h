#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/distribution/Signature.h"
#include "app/player/DeckCache.h"
#include "app/player/DeckFolder.h"
#include "app/player/KeptVersions.h"
#include "app/player/KnownDecks.h"
#include "basic/Date.h"

namespace app {

/// A deck as the collector has it; what follows from the time of day is for who shows it.
struct CollectedDeck {
  std::string name;
  /// Nothing where no version could be taken, or where it was withdrawn.
  std::optional<KnownVersion> version;
  bool isForThisComputer = false;
  /// Where its bytes lie; empty while they do not.
  std::string file;
  /// Why what lies in the folder is not taken, as a sentence.
  std::string hindrance;

  friend bool operator==(const CollectedDeck&, const CollectedDeck&) = default;
};

/// Brings decks from a distribution folder into the cache: what counts, what is refused, what has to wait,
/// and what makes room. It does its work on one thread, in steps that may take long.
class DeckCollector {
 public:
  struct Options {
    std::string computer;
    std::optional<PublicKey> trust;
    std::uint64_t cacheBytes = 0;
  };
  struct Hearer {
    /// decks() has changed, also in the midst of a step.
    std::function<void()> changed;
    /// A line about what is not taken, or is again: each once.
    std::function<void(const std::string&)> log;
  };

  /// What cannot be taken for so many milliseconds is worth a line, unless it is refused.
  static constexpr std::int64_t Patience = 10'000;

  /// The others outlive it.
  DeckCollector(DeckFolder& folder, DeckCache& cache, KeptVersions& kept, Options options, Hearer hearer);

  /// Takes what the cache has, by its digests. `now` is the local time.
  void begin(basic::Date now);
  /// One look at the folder. `ticks` are milliseconds of a clock that goes on evenly.
  void look(basic::Date now, std::int64_t ticks);

  /// In the order of the show.
  [[nodiscard]] std::vector<CollectedDeck> decks() const;
  /// Why the folder could not be read at the last look, as a sentence; else empty.
  [[nodiscard]] const std::string& trouble() const { return trouble_; }
  [[nodiscard]] bool wasRead() const { return wasRead_; }
  /// The last look was seen through to its end, and nothing was being written: another would find the same.
  [[nodiscard]] bool isSettled() const { return isSettled_; }
  /// Another look is due soon.
  [[nodiscard]] bool isBusy() const { return isBusy_; }

 private:
  /// A version that could not be had, and when it is asked for again.
  struct Attempt {
    std::string version;
    bool isOn = false;
    std::string why;
    std::int64_t due = 0;
    std::int64_t pause = 0;
  };
  struct Hindrance {
    std::string name;
    std::string why;
    std::int64_t since = 0;
    std::string told;
    bool isRefusal = false;
    bool isSeen = false;  // at this look
  };
  /// One that is to be had, once all of its files are in the cache.
  struct Wanted {
    std::string key;
    KnownVersion version;
    bool isOn = false;
  };

  [[nodiscard]] std::string refusalOf(const ListedDeck& listed, const KnownDeck& known) const;
  void consider(const ListedDeck& listed, std::vector<Wanted>& wanted);
  [[nodiscard]] DeckTags tagsOf(const ListedDeck& listed, const KnownDeck& known);
  void obtain(const Wanted& wanted);
  /// What has come of its files stays.
  void await(const Note& note);
  void put(const ListedDeck& listed, const SentFile& file);
  void makeRoom(const Wanted& wanted);
  [[nodiscard]] bool evictOne(bool isForShow);
  void lay(const KnownVersion& version, std::int64_t shownAt);
  void take(const std::string& key, const KnownVersion& version);
  void sweep();
  void store();

  [[nodiscard]] bool isWanted(const KnownVersion& version) const;
  [[nodiscard]] bool isDue(const std::string& key, const std::string& version, bool isOn);
  void failed(const std::string& key, const std::string& version, bool isOn, const std::string& why);
  void hinder(const std::string& key, const std::string& name, const std::string& why, bool isRefusal);
  void tellHindrances();
  void tellEnd(const Hindrance& hindrance) const;
  void tellTrouble(const std::string& why);

  DeckFolder& folder_;
  DeckCache& cache_;
  KeptVersions& kept_;
  Options options_;
  Hearer hearer_;

  KnownDecks known_;
  KnownDecks stored_;
  /// What is laid out in the cache, by version: of decks that count, and of those that are still on show.
  std::map<std::string, Note> held_;
  /// By key.
  std::map<std::string, Attempt> attempts_;
  std::map<std::string, Hindrance> hindrances_;
  /// Decks whose names differ from another's in case alone.
  std::map<std::string, std::string> twins_;
  /// Files that are being got.
  std::set<std::string> coming_;
  std::string trouble_;
  /// Why what is known could not be stored, when that was told.
  std::string storeFailure_;
  bool wasRead_ = false;
  bool isSettled_ = false;
  bool isBusy_ = false;
  /// Of the present step.
  basic::Date now_;
  std::int64_t ticks_ = 0;
};

}  // namespace app
