#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/book/ElementStream.h"
#include "workbook/book/Parts.h"

namespace workbook {

/// The texts that cells name by number: read as far as the highest number asked
/// for, and kept in one buffer.
class SharedStrings {
 public:
  /// Without a part there are no texts. The parts outlive it.
  SharedStrings(const Parts& parts, std::string part);

  /// Empty for a number that has no text. Valid until the next call.
  std::string_view at(std::size_t index);

 private:
  void readNext();

  const Parts& parts_;
  std::string part_;
  std::optional<ElementStream> stream_;
  bool ended_ = false;
  std::string texts_;
  std::vector<std::uint32_t> ends_;
};

}  // namespace workbook
