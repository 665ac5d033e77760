#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace render {

/// Eight rows of eight pixels, the leftmost pixel in the highest bit; set is foreground.
using PatternRows = std::array<std::uint8_t, 8>;

/// A preset pattern (ECMA-376 part 1, 20.1.10.51) by its name ("ltUpDiag"); nothing for other names.
std::optional<PatternRows> patternRows(std::string_view name);

}  // namespace render
