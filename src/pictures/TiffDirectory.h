#pragma once

#include <cstddef>
#include <cstdint>

#include "basic/FileBytes.h"

namespace pictures {

using basic::FileBytes;

/// The directory of a TIFF file (TIFF 6.0, section 2), by its own order of bytes.
class TiffDirectory {
 public:
  explicit TiffDirectory(const FileBytes& file)
      : file_(file), isBig_(file.byte(0) == 'M'), at_(number32(4)), entries_(number16(at_)) {}

  /// Whether it lies within the file.
  [[nodiscard]] bool isWithin() const {
    return at_ >= 8 && entries_ > 0 && at_ + 2 + entries_ * EntrySize <= file_.size();
  }
  /// The number that stands under a tag; 0 when there is none.
  [[nodiscard]] std::uint32_t value(std::uint32_t tag) const {
    constexpr std::uint32_t Short = 3;
    for (std::size_t i = 0; i < entries_; ++i) {
      const std::size_t entry = at_ + 2 + i * EntrySize;
      if (entry >= file_.size()) break;
      if (number16(entry) == tag) {
        return number16(entry + 2) == Short ? number16(entry + 8) : number32(entry + 8);
      }
    }
    return 0;
  }

 private:
  static constexpr std::size_t EntrySize = 12;
  [[nodiscard]] std::uint32_t number16(std::size_t at) const {
    return isBig_ ? file_.big16(at) : file_.little16(at);
  }
  [[nodiscard]] std::uint32_t number32(std::size_t at) const {
    return isBig_ ? file_.big32(at) : file_.little32(at);
  }

  const FileBytes& file_;
  bool isBig_;
  std::size_t at_;
  std::size_t entries_;
};

}  // namespace pictures
