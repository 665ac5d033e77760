#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "json/Json.h"

namespace app {

/// A table for people: columns as wide as their contents, a header line.
void printTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows);

/// For programs: indented, one line more; bytes that are no UTF-8 become U+FFFD.
void printJson(std::ostream& out, const json::Json& json);

/// A value on one line of a terminal: control characters become visible, and a
/// long text is cut with an ellipsis.
std::string oneLine(const std::string& text);

/// A message of several lines as one.
std::string joinedLines(const std::string& text);

}  // namespace app
