#pragma once

#include <string>
#include <vector>

#include "basic/Error.h"
#include "host/distribution.h"

namespace app {

/// A file that goes with a deck.
struct EnclosedFile {
  std::string source;
  /// Below the deck's folder, with "/".
  std::string path;
  std::string reader;
};

/// The files that the enclosures mean, each path once. What cannot be had is added to `missing`, as a
/// sentence. Folders are looked into through host::Drives.
[[nodiscard]] std::vector<EnclosedFile> enclosedFiles(const std::vector<host::Enclosure>& enclosures,
                                                      std::vector<std::string>& warnings);

/// A sentence about what cannot go along.
[[nodiscard]] std::string missing(const std::string& source, const std::string& reader,
                                  const basic::Error& error);

/// What is in it, read by host::Files: nothing is sent that this program may not read. Databases that are in
/// use come whole. Throws basic::Error.
[[nodiscard]] std::string contentOf(const EnclosedFile& file);

}  // namespace app
