#pragma once

#include <array>
#include <charconv>

namespace deck {

/// A finite number as XML writes it: the shortest digits that read as the same
/// number, without an allocation.
class NumberDigits {
 public:
  explicit NumberDigits(double value) {
    *std::to_chars(text_.data(), text_.data() + text_.size() - 1, value).ptr = '\0';
  }
  [[nodiscard]] const char* text() const { return text_.data(); }

 private:
  std::array<char, 32> text_;
};

}  // namespace deck
