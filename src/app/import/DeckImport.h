#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/import/PresentationConverter.h"
#include "host/services.h"

namespace app {

/// A .pptx made of an old presentation, with its tags on the slides and shapes that they were on.
struct ImportedDeck {
  std::string bytes;
  std::size_t tags = 0;
  std::size_t taggedShapes = 0;
  /// "with 31 tags, on 12 shapes among others", and how much was lost.
  [[nodiscard]] std::string summary() const;
  /// Shapes whose tags have no place on the new slide, and masters and notes, which have none: a line each
  /// with what it is, and the tags without passwords.
  std::vector<std::string> lost;
  /// What is another thing now than its author may think, a line each.
  std::vector<std::string> warnings;
};

/// Whether a file's bytes may be an old presentation, so that it is to be imported.
bool isOldPresentation(std::string_view bytes);

/// Makes a deck of a file's bytes; `name` is what errors begin with. What it looks like comes from
/// LibreOffice. The loop runs meanwhile. Throws basic::Error when it cannot be read or converted.
ImportedDeck importDeck(std::string_view bytes, const std::string& name, host::Loop& loop,
                        const PresentationConversion& conversion);

}  // namespace app
