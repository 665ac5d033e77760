#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/book/Archive.h"
#include "workbook/book/ElementStream.h"

namespace workbook {

/// The texts that cells name by number: read as far as the highest number asked
/// for, and kept in one buffer.
class SharedStrings {
 public:
  /// Without a part there are no texts. The archive outlives it.
  SharedStrings(const Archive& archive, std::string part);

  /// Empty for a number that has no text. Valid until the next call.
  std::string_view at(std::size_t index);

 private:
  void readNext();

  const Archive& archive_;
  std::string part_;
  std::optional<ElementStream> stream_;
  bool ended_ = false;
  std::string texts_;
  std::vector<std::uint32_t> ends_;
};

}  // namespace workbook
