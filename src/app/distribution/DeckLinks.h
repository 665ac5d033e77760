#pragma once

#include <string>
#include <vector>

#include "host/distribution.h"

namespace app {

/// A deck that is ready to be sent, with what its links lead to.
struct LinkedDeck {
  std::string bytes;
  /// The files that its shapes, films and charts are linked to.
  std::vector<host::Enclosure> files;
};

/// The deck's file with its links to other files changed: absolute, or where `places` puts these files when
/// they go along. Links to addresses of the web stay, and those of texts. `original` is where the deck itself
/// lies.
[[nodiscard]] LinkedDeck withLinks(const std::string& file, const std::string& original, bool goAlong,
                                   host::EnclosurePlaces& places);

}  // namespace app
