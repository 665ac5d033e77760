#include <algorithm>
#include <cstdlib>

#include "basic/numberformat/NumberFormatDigits.h"
#include "basic/numberformat/NumberFormatWriter.h"

namespace basic {
namespace {

constexpr int GeneralWidth = 11;
/// "0.000000001" is as small as 11 characters go.
constexpr int GeneralDecimals = 9;

void appendPlain(std::string& to, const SignificantDigits& digits, std::string_view decimalSeparator) {
  const int whole = std::max(digits.wholeDigits(), 1);
  for (int place = whole - 1; place >= 0; --place) to += digits.at(place);
  const int decimals = digits.count() - digits.wholeDigits();
  if (decimals > 0 && digits.count() > 0) to += decimalSeparator;
  for (int place = 1; place <= decimals; ++place) to += digits.at(-place);
}

/// "1.23457E+12": at most six digits, as many as fit beside the exponent.
void appendScientific(std::string& to, SignificantDigits digits, std::string_view decimalSeparator) {
  const int size = std::abs(digits.wholeDigits() - 1);
  const int exponentWidth = size > 99 ? 5 : 4;
  digits.roundTo(GeneralWidth - 1 - exponentWidth - digits.wholeDigits());
  const int exponent = digits.wholeDigits() - 1;
  digits.shift(-exponent);
  appendPlain(to, digits, decimalSeparator);
  to += exponent < 0 ? "E-" : "E+";
  AppendPadded(to, std::abs(exponent), 2);
}

}  // namespace

void AppendGeneral(std::string& to, double value, std::string_view decimalSeparator) {
  if (value < 0.0) to += '-';
  const SignificantDigits exact(value < 0.0 ? -value : value);
  SignificantDigits digits = exact;
  if (exact.wholeDigits() > 0) {
    // The point takes a place as soon as there are decimals.
    digits.roundTo(std::max(GeneralWidth - 1 - exact.wholeDigits(), 0));
    if (digits.wholeDigits() <= GeneralWidth) return appendPlain(to, digits, decimalSeparator);
  } else {
    // Below 0.0001 only what the decimals show entirely is shown by decimals.
    constexpr int SmallestRounded = -3;
    digits.roundTo(GeneralDecimals);
    const bool entire = exact.count() - exact.wholeDigits() <= GeneralDecimals;
    if (entire || exact.wholeDigits() >= SmallestRounded) return appendPlain(to, digits, decimalSeparator);
  }
  appendScientific(to, exact, decimalSeparator);
}

}  // namespace basic
