#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "connections/HeaderRow.h"

namespace LF2000 {

/// How a delimited text is laid out.
struct TextFileDialect {
  /// NoDelimiter (TextFileScanner.h) where the text is one column.
  char Delimiter;
  /// Where its first record begins: behind a first line "sep=;", and behind titles.
  std::size_t Begin = 0;
  /// Whether titles stand in front of it.
  bool HasTitles = false;
  /// A sentence, where one column is likely not what the text's author meant.
  std::string Doubt;
};

/// Finds the layout from the first 20 records. A first line "sep=;" says what delimits, as spreadsheet
/// programs have it. Otherwise it is, of TAB, semicolon, comma and bar, in this order of preference:
///
/// - the one that splits the records into the same number of fields, over one; an empty field behind the
///   last one does not count;
/// - with `firstRowFieldNames`, the one that splits so most records behind titles;
/// - the one that splits the first record and at least half of them at all (a line is short, or has a field
///   too many).
///
/// Titles (HeaderRow.h) are looked for with `firstRowFieldNames` alone.
TextFileDialect FindDialect(std::string_view text, bool firstRowFieldNames);

/// The first 20 records as they are split so, without the doubling of quotes.
std::vector<RecordFields> FirstRecords(std::string_view text, const TextFileDialect& dialect);

}  // namespace LF2000
