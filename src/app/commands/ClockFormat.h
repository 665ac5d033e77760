#pragma once

#include <string>

namespace app {

/// Throws UsageError, with the list of signs, when a format for clocks holds none: such a clock would stand.
void requireClockFormat(const std::string& format);

}  // namespace app
