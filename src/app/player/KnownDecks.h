#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/player/DeckFolder.h"
#include "app/player/DeckTags.h"

namespace app {

/// A version of a deck, and what it says about itself.
struct KnownVersion {
  ListedDeck listed;
  DeckTags tags;

  friend bool operator==(const KnownVersion&, const KnownVersion&) = default;
};

/// What a player remembers of a deck.
struct KnownDeck {
  /// As its folder spells it.
  std::string name;
  /// The version that counts; nothing where there is none, or none any more.
  std::optional<KnownVersion> version;
  /// The highest serial number that was ever taken.
  std::int64_t highestSerial = 0;
  /// When it was on show last, in seconds since 1970.
  std::int64_t shownAt = 0;

  friend bool operator==(const KnownDeck&, const KnownDeck&) = default;
};

/// What a player knows when it starts without its folder.
struct KnownDecks {
  /// DeckFolder::device().
  std::uint64_t device = 0;
  /// By keyOf() their names.
  std::map<std::string, KnownDeck> decks;

  /// From what text() gave; throws basic::Error for anything else.
  [[nodiscard]] static KnownDecks read(std::string_view text);
  [[nodiscard]] std::string text() const;

  /// The same for names that differ in the case of letters alone; in the order of the show.
  [[nodiscard]] static std::string keyOf(std::string_view name);

  friend bool operator==(const KnownDecks&, const KnownDecks&) = default;
};

/// The same for notes of equal names and files, whenever they were sent.
[[nodiscard]] std::string versionOf(const Note& note);

}  // namespace app
