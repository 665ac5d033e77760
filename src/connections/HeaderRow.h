#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace LF2000 {

/// The fields of a record as they stand in a source.
using RecordFields = std::vector<std::string_view>;

/// The number of fields without empty ones at the end: spreadsheet programs fill up all lines to the same
/// length.
std::size_t FilledFields(const RecordFields& fields);

/// Which of a table's first records holds the column names: 0, unless titles stand above them.
///
/// Titles stand above the first record that has as many fields as most that follow it or more. They have
/// fewer, the first of them at most half as many; and that record looks like names: no field is empty,
/// doubled in any case of letters, or begins with a digit or a blank. Where no record follows, the names are
/// three at least: two words behind a line are as likely a sentence with a comma in it.
std::size_t HeaderRow(const std::vector<RecordFields>& records);

/// Whether the first record is likely to hold the column names: it looks like names, none of them stands
/// below again in its column, and some column is of another kind below: numbers, dates, times, codes of one
/// length or in capitals. A guess, for an author to look at.
bool LooksLikeHeader(const std::vector<RecordFields>& records);

}  // namespace LF2000
