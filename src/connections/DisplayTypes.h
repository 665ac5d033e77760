#pragma once

#include <cstdint>

namespace LF2000 {

/// The display type by which fields show their values, as clsConnection::GetValueDatabase takes it; the
/// others show where the values come from.
inline constexpr std::int16_t DisplayValue = 1;

}  // namespace LF2000
