#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace app {

/// A table for people: columns as wide as their contents, a header line.
void printTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows);

/// A value on one line of a terminal: control characters become visible, and a
/// long text is cut with an ellipsis.
std::string oneLine(const std::string& text);

/// A message of several lines as one.
std::string joinedLines(const std::string& text);

}  // namespace app
