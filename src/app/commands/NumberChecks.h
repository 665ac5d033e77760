#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>

namespace app {

// Checks of options' values. They say in words what is taken, and nothing in the help.

/// A whole number within these.
CLI::Validator wholeNumber(std::int64_t fewest, std::int64_t most = std::numeric_limits<std::int64_t>::max());
/// A number, 0 at least.
CLI::Validator notNegative();

}  // namespace app
