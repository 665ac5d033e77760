#include "basic/CompoundFile.h"

#include <string>

namespace basic {

bool IsCompoundFile(std::string_view bytes) { return bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"); }

bool HasCompoundEntry(std::string_view bytes, std::string_view name) {
  // Entries are 128 bytes long and lie at multiples of that whatever the sector
  // size; each begins with its name in UTF-16.
  constexpr std::size_t EntrySize = 128;
  std::string wanted;
  for (const char c : name) wanted.append({c, '\0'});
  wanted.append(2, '\0');
  for (std::size_t at = 4 * EntrySize; at + EntrySize <= bytes.size(); at += EntrySize) {
    if (bytes.substr(at, wanted.size()) == wanted) return true;
  }
  return false;
}

}  // namespace basic
