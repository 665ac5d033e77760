#include "workbook/book/FileKind.h"

#include <array>

#include "basic/CompoundFile.h"
#include "basic/Strings.h"

namespace workbook {

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
  const bool isCompound = basic::IsCompoundFile(bytes);
  if (isCompound && basic::HasCompoundEntry(bytes, "EncryptedPackage")) {
    return "it is encrypted. Remove its password and save it again.";
  }
  if (reader == Reader::LibreOffice || bytes.starts_with("PK")) return {};
  if (isCompound && (basic::HasCompoundEntry(bytes, "Workbook") || basic::HasCompoundEntry(bytes, "Book"))) {
    return "it is in the binary format of Excel 97 to 2003, which its name does not say. Name it .xls, or "
           "save "
           "it as .xlsx.";
  }
  return "it is no workbook of the formats xlsx, xlsm";
}

}  // namespace workbook
