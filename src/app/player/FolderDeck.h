#pragma once

#include <cstdint>
#include <string>

#include "model/modSchedule.h"

namespace app {

/// A deck of a distribution folder, as the player of one computer knows it.
struct FolderDeck {
  /// Its file name without ".pptx"; no two differ in the case of letters alone.
  std::string name;
  /// It is for this computer, it is its time, and all of its files are in the cache.
  bool isOn = false;
  /// Why it is not on, or, of one that is, why a newer version of it is not shown: sentences. Else empty.
  std::string why;

  /// Where its bytes lie, in the cache; they stay as they are under this name. Empty while there are none.
  std::string file;
  /// What the presentation is to be opened as: what it names by relative paths lies beside that. The deck's
  /// place in a local folder where it was put by hand, else a path in the cache. There need not be such a
  /// file.
  std::string path;
  /// Another one for other files; equal ones are the same deck.
  std::string version;
  /// When it was sent, as its note says; 0 without one.
  std::int64_t serial = 0;
  LF2000::modSchedule::Schedule schedule;

  friend bool operator==(const FolderDeck&, const FolderDeck&) = default;
};

/// Of one version of a deck.
inline std::string idOf(const FolderDeck& deck) { return deck.name + '\n' + deck.version; }
inline bool isSame(const FolderDeck& a, const FolderDeck& b) { return idOf(a) == idOf(b); }

}  // namespace app
