#pragma once

#include <cstddef>
#include <memory>

namespace host {

/// Bytes in one buffer, as read from a file.
struct Bytes {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;
};

}  // namespace host
