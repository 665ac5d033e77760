#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "app/distribution/Note.h"
#include "process/Descriptor.h"

namespace app {

/// A player's cache: files by their digests, and for each version of a deck a folder in which they lie by
/// their own names. What lies there is whole, or it is not called by its name. What fails throws basic::Error
/// with the reason.
///
///     content/DIGEST            a file
///     partial/DIGEST            what has come of one so far
///     decks/VERSION/NAME.pptx   the same files once more (hard links)
class DeckCache {
 public:
  /// Gets the rest of a file: from that byte on, given piece by piece.
  using Take = std::function<void(std::string_view bytes)>;
  using Fetch = std::function<void(std::uint64_t from, const Take& take)>;

  /// Makes the folder, for this user alone, and holds it until the object is gone. One that holds other files
  /// is refused.
  explicit DeckCache(std::filesystem::path folder);

  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

  /// Whether the file is there; that it is whole is looked up once.
  [[nodiscard]] bool has(const SentFile& file);
  /// Puts a file there, unless it is. What has come when `fetch` throws is kept, and gone on with the next
  /// time. A file of another size or digest is none.
  void put(const SentFile& file, const Fetch& fetch);
  /// Where the file lies that has() knows.
  [[nodiscard]] std::string pathOf(const SentFile& file) const;

  /// Lays a deck's files out by their names. All of them are there.
  void layOut(const std::string& version, const Note& note);
  /// Where a file of a version lies when it was laid out.
  [[nodiscard]] std::string pathOf(const std::string& version, const SentFile& file) const;

  /// What of a cache is needed.
  struct Needs {
    std::set<std::string> digests;
    /// Of files that are being got.
    std::set<std::string> coming;
    std::set<std::string> versions;
    friend bool operator==(const Needs&, const Needs&) = default;
  };
  /// Removes everything else.
  void keepOnly(const Needs& needs);
  /// What the files have, in bytes.
  [[nodiscard]] std::uint64_t bytes() const;

 private:
  [[nodiscard]] std::filesystem::path content(const std::string& digest) const;
  [[nodiscard]] std::filesystem::path partial(const std::string& digest) const;
  [[nodiscard]] std::filesystem::path layout(const std::string& version) const;

  std::filesystem::path folder_;
  process::Descriptor lock_;
  /// Files that are whole, and their sizes.
  std::map<std::string, std::uint64_t> whole_;
  std::optional<Needs> needs_;
};

}  // namespace app
