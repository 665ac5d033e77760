#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "basic/Date.h"

namespace basic {

/// Nothing was ever stored.
struct Empty {
  friend bool operator==(Empty, Empty) = default;
};

/// The database's "no value".
struct Null {
  friend bool operator==(Null, Null) = default;
};

/// An exact decimal number in plain notation ("-12.50"), point as separator,
/// for values that a double would round.
struct Decimal {
  std::string digits;
  friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// Raw bytes as a database delivers them.
using Binary = std::vector<unsigned char>;

/// A value as it travels between the ports and the system. Text is UTF-8.
/// CStr (basic/Conversion.h) gives the default text of each kind.
using Variant =
    std::variant<Empty, Null, bool, std::int32_t, std::int64_t, double, Decimal, Date, std::string, Binary>;

inline bool IsNull(const Variant& value) { return std::holds_alternative<Null>(value); }

}  // namespace basic
