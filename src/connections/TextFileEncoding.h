#pragma once

#include <cstddef>
#include <string_view>

#include "host/bytes.h"

namespace LF2000 {

/// A text file's content as UTF-8, well-formed throughout.
struct TextFileContent {
  host::Bytes Bytes;
  /// Where the text begins in them: behind a byte-order mark.
  std::size_t Begin = 0;
  /// What it was encoded in: "UTF-8", "UTF-16", "Windows-1252".
  std::string_view Encoding = "UTF-8";
};

/// Decodes what was read from a text file. A byte-order mark tells UTF-8,
/// UTF-16 little-endian and UTF-16 big-endian; without one the file is UTF-8 if
/// it is well-formed as such and Windows-1252 otherwise. Malformed pieces after
/// a mark become U+FFFD each; the five bytes that Windows-1252 leaves undefined
/// become the control characters of their numbers. UTF-8 is taken over as it is,
/// but for byte-order marks in its midst, which are left out.
TextFileContent DecodeTextFile(host::Bytes bytes);

}  // namespace LF2000
