#include "basic/numberformat/NumberFormatDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace basic {
namespace {

constexpr int Precision = 15;

}  // namespace

SignificantDigits::SignificantDigits(double magnitude) {
  // Most numbers have few decimals: a whole number of at most 15 digits that
  // divided gives the number has the digits it has.
  constexpr int FewDecimals = 4;
  constexpr double Few = 1e4;
  constexpr double FirstTooLong = 1e15;
  if (const double scaled = magnitude * Few; scaled < FirstTooLong) {
    const std::int64_t whole = std::llround(scaled);
    if (static_cast<double>(whole) / Few == magnitude) {
      take(whole);
      shift(-FewDecimals);
      return;
    }
  }
  // Found faster than the first 15 digits are the shortest ones that mean this
  // number. No 16 digits are nearer to it than these, so they lie on the same
  // side of the middle between two numbers of 15; only the middle itself is open.
  std::array<char, 32> text;
  char* const begin = text.data();
  char* const end = begin + text.size();
  exponent_ = split(begin, std::to_chars(begin, end, magnitude, std::chars_format::scientific).ptr) + 1;
  if (count_ == Precision + 1 && digits_[Precision] == '5') {
    const auto exact = std::to_chars(begin, end, magnitude, std::chars_format::scientific, Precision - 1);
    exponent_ = split(begin, exact.ptr) + 1;
  }
  roundTo(Precision - exponent_);
  dropZeros();
}

/// Takes the digits of "1.2345e-06"; gives the exponent.
int SignificantDigits::split(const char* at, const char* end) {
  count_ = 0;
  for (; *at != 'e'; ++at) {
    if (*at != '.') digits_[static_cast<std::size_t>(count_++)] = *at;
  }
  ++at;
  if (*at == '+') ++at;
  int exponent = 0;
  std::from_chars(at, end, exponent);
  return exponent;
}

void SignificantDigits::dropZeros() {
  while (count_ > 0 && digits_[static_cast<std::size_t>(count_) - 1] == '0') --count_;
}

void SignificantDigits::take(std::int64_t value) {
  if (value == 0) return;
  const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), value);
  count_ = exponent_ = static_cast<int>(end.ptr - digits_.data());
  dropZeros();
}

void SignificantDigits::roundTo(int decimals) {
  const int keep = exponent_ + decimals;
  if (keep >= count_) return;
  bool up = keep >= 0 && digits_[static_cast<std::size_t>(keep)] >= '5';
  count_ = std::max(keep, 0);
  while (count_ > 0) {
    char& last = digits_[static_cast<std::size_t>(count_) - 1];
    if (up && last != '9') {
      ++last;
      return;
    }
    if (!up && last != '0') return;
    --count_;
  }
  if (up) {
    digits_[0] = '1';
    count_ = 1;
    ++exponent_;
  } else {
    exponent_ = 0;
  }
}

}  // namespace basic
