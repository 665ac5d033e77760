#pragma once

#include <functional>
#include <string_view>

#include "host/bytes.h"
#include "host/text_table.h"

namespace LF2000 {

/// Reads a delimited text file into a table, in the memory that the file was
/// read into. The stages: encoding (TextFileEncoding.h), delimiter and titles
/// (TextFileDialect.h), records.
///
/// Lines end at CR LF, LF or CR; empty lines are no records, nor are, where the
/// text has a delimiter, lines of blanks; the last line needs no end. Fields may be quoted as in RFC 4180: a
/// quoted field holds delimiters, line ends and, doubled, quotes; text between its closing quote and the next
/// delimiter is appended to it. A quote that is never closed is an ordinary character, and so is one within
/// an unquoted field. All other characters, NUL and blanks among them, are kept. Values are cut to their
/// first 4000 characters.
///
/// The first record gives the columns: their names with `firstRowFieldNames`,
/// otherwise their number, and they are named Column1, Column2 and so on. Empty
/// names at the end are no columns. A record with fewer fields has nothing in the
/// rest of its columns; fields beyond the columns are dropped.
///
/// `report` (if any) is told what an author should know, a sentence each: that
/// titles were passed over, that one column is unlikely, that text was dropped.
///
/// A file that is plainly no delimited text (TextFileKind.h), and one whose column names stand in two lines
/// one below the other, is an error.
/// A column name that is empty or that another column has in any case is an
/// error, and so is a file without any record when names are expected of it;
/// otherwise such a file is a table of Column1 without rows. A file of 4 GB or
/// more is an error.
host::TextTable ReadTextFile(host::Bytes bytes, bool firstRowFieldNames,
                             const std::function<void(std::string_view)>& report);

}  // namespace LF2000
