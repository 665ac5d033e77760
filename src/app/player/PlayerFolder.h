#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/distribution/Signature.h"
#include "app/player/DeckFolder.h"
#include "app/player/FolderDeck.h"
#include "host/services.h"
#include "platform/EventLoop.h"

namespace app {

struct PlayerFolderOptions {
  /// A folder, of this machine or a share that is mounted here, or the address of one behind a web server
  /// ("http:", "https:").
  std::string place;
  /// The name of this computer, as decks have it in their lists.
  std::string computer;
  /// Takes notes with a signature of this key alone.
  std::optional<PublicKey> trust;
  /// Where the cache lies; it is made. Held by one player at a time.
  std::string cache;
  /// What the cache may hold of decks. What is on show and does not fit is held all the same.
  std::uint64_t cacheBytes = std::uint64_t{4} << 30U;
};

/// The decks that a distribution folder has for one computer (docs/distribution-folder.md), in a cache.
///
/// The folder is looked at on a thread of its own, so one that hangs or is gone holds up nobody: what the
/// cache has goes on, also after a restart. Clocks are read once a second, so a deck comes on and goes off
/// by the time on the wall, also when that is set. All of the object is for the loop's thread.
class PlayerFolder {
 public:
  /// Takes what the cache has, then looks at the folder, all of it on the thread: decks() is empty at first.
  /// `log` gets a line for what cannot be taken, and when that has ended: each once. The loop and the clock
  /// outlive it. Throws basic::Error where the cache cannot be used or the place is none.
  PlayerFolder(platform::EventLoop& loop, host::Clock& clock, const PlayerFolderOptions& options,
               std::function<void(const std::string&)> log);
  /// With a folder of any kind in the place of that of the options. It is destroyed on the thread.
  using MakeFolder = std::function<std::shared_ptr<DeckFolder>(const DeckFolder::GoOn& goOn)>;
  PlayerFolder(platform::EventLoop& loop, host::Clock& clock, PlayerFolderOptions options,
               const MakeFolder& make, std::function<void(const std::string&)> log);
  ~PlayerFolder();
  PlayerFolder(const PlayerFolder&) = delete;
  PlayerFolder& operator=(const PlayerFolder&) = delete;

  /// Every deck that is known, in the order of the show: by name, in any case.
  [[nodiscard]] const std::vector<FolderDeck>& decks() const;
  /// Hears, on the loop, that decks() or trouble() has changed. Must not throw; an empty one ends that.
  void onChange(std::function<void()> changed);

  /// Whether the folder has been read since this object began.
  [[nodiscard]] bool wasRead() const;
  /// Whether another look at the folder, if it stays as it is, would find the same.
  [[nodiscard]] bool isSettled() const;
  /// Why the folder cannot be read at present, as a sentence; empty when it can.
  [[nodiscard]] std::string trouble() const;

  /// Keeps the files of a deck where they are for as long as somebody holds the answer: for what is on show.
  /// Null when they are gone. What was kept least recently makes room first.
  [[nodiscard]] std::shared_ptr<const void> keep(const FolderDeck& deck);

  /// Where the cache of a player lies unless it is told: among the user's, by place, computer and key.
  [[nodiscard]] static std::string usualCache(const PlayerFolderOptions& options);

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace app
