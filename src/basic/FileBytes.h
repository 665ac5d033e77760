#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace basic {

/// Numbers at places of a file, in both orders of bytes; 0 beyond its end.
class FileBytes {
 public:
  /// The bytes outlive it.
  explicit FileBytes(std::string_view bytes) : bytes_(bytes) {}

  [[nodiscard]] std::uint32_t byte(std::size_t at) const {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0U;
  }
  [[nodiscard]] std::uint32_t big16(std::size_t at) const { return byte(at) << 8U | byte(at + 1); }
  [[nodiscard]] std::uint32_t big32(std::size_t at) const { return big16(at) << 16U | big16(at + 2); }
  [[nodiscard]] std::uint32_t little16(std::size_t at) const { return byte(at + 1) << 8U | byte(at); }
  [[nodiscard]] std::uint32_t little32(std::size_t at) const {
    return little16(at + 2) << 16U | little16(at);
  }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  /// As many of `length` bytes as there are.
  [[nodiscard]] std::string_view at(std::size_t from, std::size_t length) const {
    return from < bytes_.size() ? bytes_.substr(from, length) : std::string_view();
  }

 private:
  std::string_view bytes_;
};

}  // namespace basic
