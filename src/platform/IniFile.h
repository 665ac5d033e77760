#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The content of a settings file:
///
///     ; a comment, as is a line that begins with #
///     [Section]
///     Key = value
///     Key = "value with blanks at its ends "
///
/// Names of sections and keys are the same in any case. Blanks around names
/// and values do not count; a byte-order mark and CR LF are tolerated. Of two
/// equal keys the last counts. A section may come in several pieces.
struct IniFile {
  struct Entry {
    std::string section;
    std::string key;
    std::string value;
  };
  struct BrokenLine {
    int number;
    std::string reason;
  };
  std::vector<Entry> entries;
  /// Lines that were passed over.
  std::vector<BrokenLine> broken;
};

IniFile parseIniFile(std::string_view text);

}  // namespace platform
