#pragma once

#include <cstdint>
#include <string>

/// What an author linked last, which the pages propose for the next shape.
namespace LF2000::modLastUsed {

/// The tag number.
inline std::string Connection;
inline std::int32_t Row = 0;

inline void Reset() {
  Connection.clear();
  Row = 0;
}

}  // namespace LF2000::modLastUsed
