#pragma once

#include <cstddef>
#include <memory>

namespace host {

/// Bytes in one buffer, as read from a file; who holds it owns them. `data` may be null when `size` is 0, and
/// nothing stands behind the last byte.
struct Bytes {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;
};

}  // namespace host
