#pragma once

#include <optional>
#include <string>

#include "app/show/DeckWatch.h"
#include "deck/objects/Presentation.h"

namespace app {

/// The file of a deck that is being edited: whether it can be written, and what others have made of it.
class DeckFile {
 public:
  explicit DeckFile(const std::string& path) : path_(path) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Why it cannot be written, as a sentence; nothing when it can, as far as that is known.
  [[nodiscard]] std::optional<std::string> whyReadOnly() const;
  /// The file that a presentation program keeps beside a deck that it has open; nothing without one. A hint
  /// only: such files stay behind when programs crash.
  [[nodiscard]] std::optional<std::string> ownerFile() const;

  enum class Look {
    Same,
    /// Another version is there.
    Changed,
    Gone,
  };
  /// Compares the file with what the presentation was read from, or saved as, by its content: a file that was
  /// only touched is the same, and the presentation accepts its state. Throws when the file cannot be read.
  Look look(deck::Presentation& presentation);
  /// The version that the last look found changed. Throws when it is not whole.
  DeckVersion takeVersion();

  /// Puts another file's bytes in this one's place, when they are a whole deck and nobody has changed the
  /// presentation's file meanwhile. Throws otherwise, and has changed nothing.
  DeckVersion replaceBy(const std::string& file, const deck::Presentation& presentation);

 private:
  std::string path_;
  std::optional<DeckVersion> version_;
};

}  // namespace app
