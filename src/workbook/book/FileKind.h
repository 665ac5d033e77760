#pragma once

#include <string>
#include <string_view>

namespace workbook {

/// Who reads a file, told by its name.
enum class Reader {
  Native,       // .xlsx, .xlsm and their templates, and names that say nothing
  LibreOffice,  // .xls, .xlsb, .ods and others
};
Reader readerOf(std::string_view path);

/// Why bytes that are for this reader are no workbook that it can open; empty
/// when they may be one. Encrypted workbooks are told apart whoever reads them.
std::string reasonAgainst(std::string_view bytes, Reader reader);

}  // namespace workbook
