#pragma once

#include <cstddef>

namespace platform {

/// Lets this process, and those that it starts from now on, have so many files and
/// connections open at one time, as far as the system allows it. Returns how many it may
/// have: more than that where it might already, fewer where the hard limit is lower.
std::size_t allowDescriptors(std::size_t wanted);

}  // namespace platform
