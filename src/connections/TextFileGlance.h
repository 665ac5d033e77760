#pragma once

#include <string>

#include "host/bytes.h"

namespace LF2000 {

/// How a text file is to be read, for an author to see and to mend.
struct TextFileGlance {
  /// "UTF-8", "UTF-16", "Windows-1252".
  std::string Encoding;
  /// "tab", "semicolon", "comma", "bar", another sign in quotes; empty where the text is one column.
  std::string Delimiter;
  /// Whether its first record, below titles, is likely to hold the column names (HeaderRow.h).
  bool HasNames = false;
};

/// Looks at the beginning of what was read from a file. Raises what it is where it is plainly no text
/// (TextFileKind.h).
TextFileGlance GlanceAt(host::Bytes bytes);

}  // namespace LF2000
