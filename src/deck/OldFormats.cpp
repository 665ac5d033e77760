#include "deck/OldFormats.h"

namespace deck {
namespace {

/// Whether the file's directory has an entry of a name. Its entries are 128 bytes
/// long and lie at multiples of that whatever the sector size; each begins with
/// its name in UTF-16.
bool hasEntry(std::string_view bytes, std::string_view name) {
  constexpr std::size_t EntrySize = 128;
  std::string wanted;
  for (char c : name) wanted.append({c, '\0'});
  wanted.append(2, '\0');
  for (std::size_t at = 4 * EntrySize; at + EntrySize <= bytes.size(); at += EntrySize) {
    if (bytes.substr(at, wanted.size()) == wanted) return true;
  }
  return false;
}

}  // namespace

std::string describeOldFormat(std::string_view bytes) {
  if (!bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) return {};
  if (hasEntry(bytes, "EncryptedPackage")) {
    return "it is encrypted. Remove its password in PowerPoint and save it again.";
  }
  if (hasEntry(bytes, "PowerPoint Document")) {
    return "it is in the binary format of PowerPoint 97 to 2003. Save it as .pptx in PowerPoint.";
  }
  return "it is an OLE compound file, no presentation of the formats pptx, pptm, ppsx, potx";
}

}  // namespace deck
