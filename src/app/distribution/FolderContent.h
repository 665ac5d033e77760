#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/distribution/Note.h"

namespace app {

/// What lies in a distribution folder. Touches the disk in every call; on a drive of another machine it is
/// used within host::OnDrive.
class FolderContent {
 public:
  /// Throws basic::Error where there is no such folder.
  explicit FolderContent(std::filesystem::path path);

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// By the deck's name; nothing without one. Throws for one that cannot be read.
  [[nodiscard]] std::optional<Note> note(const std::string& name) const;
  [[nodiscard]] bool holdsDeck(const std::string& name) const;
  /// Throws when a deck or a note has the same name but for its case: players could not tell them apart.
  void requireDistinct(const std::string& name) const;

  /// A new folder "NAME.20261122T101500123Z", named by the time or one not long after it. Answers its name.
  [[nodiscard]] std::string addPackage(const std::string& name, std::int64_t milliseconds) const;
  /// A file of a package, flushed; its folders are made.
  void addFile(const std::string& package, const std::string& file, std::string_view bytes) const;
  void dropPackage(const std::string& package) const;
  [[nodiscard]] std::string deckPath(const std::string& name) const;

  /// Puts the note there and the index of all notes, behind the deck that it is about where that lies in the
  /// folder itself. All are written before the first of them takes its place: on a full disk nothing changes.
  void put(const Note& note, const std::optional<std::string>& deck) const;
  /// Removes what the note no longer means. `keeps`: how many former packages stay.
  void tidy(const Note& note, std::size_t keeps) const;

 private:
  [[nodiscard]] std::vector<Note> notes() const;
  [[nodiscard]] std::vector<std::string> packages(const std::string& name) const;

  std::filesystem::path path_;
};

}  // namespace app
