#include "workbook/FileKind.h"

#include <array>

#include "basic/Strings.h"

namespace workbook {
namespace {

/// Whether an OLE compound file ([MS-CFB]) has an entry of a name. Its entries
/// are 128 bytes long and lie at multiples of that whatever the sector size; each
/// begins with its name in UTF-16.
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

Reader readerOf(std::string_view path) {
  static constexpr std::array<std::string_view, 13> Foreign{".xls",  ".xlt", ".xlsb", ".ods", ".ots",
                                                            ".fods", ".sxc", ".csv",  ".tsv", ".dif",
                                                            ".slk",  ".dbf", ".wk1"};
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return Reader::Native;
  for (std::string_view extension : Foreign) {
    if (basic::EqualsIgnoreCase(path.substr(dot), extension)) return Reader::LibreOffice;
  }
  return Reader::Native;
}

std::string reasonAgainst(std::string_view bytes, Reader reader) {
  if (bytes.empty()) return "it is empty";
  const bool isCompound = bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  if (isCompound && hasEntry(bytes, "EncryptedPackage")) {
    return "it is encrypted. Remove its password and save it again.";
  }
  if (reader == Reader::LibreOffice || bytes.starts_with("PK")) return {};
  if (isCompound && (hasEntry(bytes, "Workbook") || hasEntry(bytes, "Book"))) {
    return "it is in the binary format of Excel 97 to 2003, which its name does not say. Name it .xls, or "
           "save "
           "it as .xlsx.";
  }
  return "it is no workbook of the formats xlsx, xlsm";
}

}  // namespace workbook
