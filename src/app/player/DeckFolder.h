#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/distribution/Note.h"

namespace app {

/// A deck that lies in a distribution folder.
struct ListedDeck {
  Note note;
  /// Of a deck that was put there by hand, without a note: its path in the local folder. Its note is made up,
  /// with the serial number 0.
  std::string path;

  friend bool operator==(const ListedDeck&, const ListedDeck&) = default;
};

/// A deck that lies there and cannot be taken as it stands, and why, as a sentence.
struct UnreadableDeck {
  std::string name;
  std::string why;
};

struct FolderListing {
  /// In the order of the bytes of their names.
  std::vector<ListedDeck> decks;
  std::vector<UnreadableDeck> unreadable;
  /// Something is being written there, so that another look is due soon.
  bool isBusy = false;
};

/// A distribution folder, wherever it lies (docs/distribution-folder.md). All calls are made on one thread,
/// on which they may take their time; what fails throws basic::Error.
class DeckFolder {
 public:
  /// Takes bytes of a file as they come.
  using Take = std::function<void(std::string_view bytes)>;
  /// Called again and again while something takes long; throws when nobody waits for it any more.
  using GoOn = std::function<void()>;

  virtual ~DeckFolder() = default;

  /// What lies there now.
  [[nodiscard]] virtual FolderListing list() = 0;
  /// The bytes of a file of a note, from this one on.
  virtual void read(const ListedDeck& deck, const SentFile& file, std::uint64_t from, const Take& take) = 0;
  /// A descriptor that can be read when something may have changed there; below 0 where nothing tells of it.
  [[nodiscard]] virtual int changes() const { return -1; }
  /// Takes what it tells.
  virtual void heard() {}

  /// The device that a local folder lay on when it held a deck or a note, else 0. It is remembered, so that a
  /// share that is not mounted is not taken for an empty folder.
  [[nodiscard]] virtual std::uint64_t device() const { return 0; }
  virtual void device(std::uint64_t /*known*/) {}
};

}  // namespace app
