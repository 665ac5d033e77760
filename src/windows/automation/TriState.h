#pragma once

#include <cstdint>

namespace windows::automation {

/// MsoTriState
inline constexpr std::int32_t triState(bool value) { return value ? -1 : 0; }

}  // namespace windows::automation
