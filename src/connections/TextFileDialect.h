#pragma once

#include <string_view>

namespace LF2000 {

/// The delimiter of a text: of TAB, semicolon, comma and bar, in this order of
/// preference, the one that splits the first 20 records into the same number of
/// fields, over one. When none does (a line is short, or has a field too many),
/// the one that splits the first record and at least half of them at all.
/// Otherwise NoDelimiter (TextFileScanner.h): the text is one column.
char FindDelimiter(std::string_view text);

}  // namespace LF2000
