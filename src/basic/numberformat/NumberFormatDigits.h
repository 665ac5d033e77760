#pragma once

// Inside NumberFormat: a number as the decimal digits that spreadsheets know.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace basic {

/// At most 15 significant digits, as 0.d1d2d3... times a power of ten; no zeros
/// at either end.
class SignificantDigits {
 public:
  /// Of a finite number that is not negative.
  explicit SignificantDigits(double magnitude);

  [[nodiscard]] int count() const { return count_; }
  /// Digits before the point; 0 or less below 0.1 and for zero.
  [[nodiscard]] int wholeDigits() const { return exponent_; }

  /// The digit of 10^place, 0 where there is none.
  [[nodiscard]] char at(int place) const {
    const int index = exponent_ - 1 - place;
    return index >= 0 && index < count_ ? digits_[static_cast<std::size_t>(index)] : '0';
  }

  /// Multiplies with a power of ten.
  void shift(int power) {
    if (count_ > 0) exponent_ += power;
  }
  /// Half away from zero. Less than no decimals is tens, hundreds ...
  void roundTo(int decimals);

 private:
  void take(std::int64_t value);
  int split(const char* at, const char* end);
  void dropZeros();

  std::array<char, 20> digits_;
  int count_ = 0;
  int exponent_ = 0;
};

/// Appends a number as General shows it: at most 11 characters, the sign aside.
void AppendGeneral(std::string& to, double value, std::string_view decimalSeparator);

}  // namespace basic
