#pragma once

#include <cstdint>
#include <utility>

#include "basic/Error.h"

namespace windows::automation {

/// What a call gives, or something else where the program that is at hand has no such member (438): versions
/// differ.
template <typename Call, typename Value>
Value whereThere(Call&& call, Value otherwise) {
  constexpr std::int32_t NoSuchMember = 438;
  try {
    return call();
  } catch (const basic::Error& error) {
    if (error.number != NoSuchMember) throw;
    return otherwise;
  }
}

}  // namespace windows::automation
