#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Text fit for a terminal: line ends are LF, other control characters are "?",
/// since texts come from decks and data.
std::string forTerminal(std::string_view text);

/// Writes all of it; failures are passed over, there is nowhere to report them.
void writeTo(int descriptor, std::string_view text);

}  // namespace platform
