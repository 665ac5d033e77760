#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "app/player/DeckFolder.h"
#include "opc/Files.h"
#include "process/Descriptor.h"

namespace app {

/// A distribution folder of this machine, or a share that is mounted here. Symbolic links in it are not
/// followed.
class LocalFolder final : public DeckFolder {
 public:
  /// Milliseconds of some clock that goes on evenly.
  using Ticks = std::function<std::int64_t()>;

  /// What has stood so for this many milliseconds is no longer being written.
  static constexpr std::int64_t Rest = 500;
  /// A folder of more entries is not read: it is none that `distribute` fills.
  static constexpr std::size_t MostEntries = 20'000;

  LocalFolder(std::string path, Ticks ticks, GoOn goOn);

  [[nodiscard]] FolderListing list() override;
  void read(const ListedDeck& deck, const SentFile& file, std::uint64_t from, const Take& take) override;
  [[nodiscard]] int changes() const override { return changes_.get(); }
  void heard() override;

  [[nodiscard]] std::uint64_t device() const override { return device_; }
  void device(std::uint64_t known) override { device_ = known; }

 private:
  /// What is known of a file: of a note its text, of a deck its digest.
  struct Seen {
    opc::FileState state;
    std::int64_t since = 0;
    bool isRead = false;
    Note note;
    std::string why;
  };
  struct Names;

  [[nodiscard]] Names namesIn(const process::Descriptor& folder);
  void addNote(const process::Descriptor& folder, const std::string& name, FolderListing& listing);
  void addDeck(const process::Descriptor& folder, const std::string& file, FolderListing& listing);
  void watch();

  std::string path_;
  Ticks ticks_;
  GoOn goOn_;
  process::Descriptor changes_;
  std::uint64_t device_ = 0;
  /// By name in the folder.
  std::map<std::string, Seen> seen_;
};

}  // namespace app
