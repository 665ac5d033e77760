#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace web {

/// A part of a body.
struct ByteRange {
  std::uint64_t first = 0;
  std::uint64_t size = 0;

  friend bool operator==(const ByteRange&, const ByteRange&) = default;
};

/// What a Range header (RFC 9110, 14) asks of a body.
struct RangeWanted {
  enum class Kind {
    /// No single range of bytes that can be understood: all of it is sent.
    Whole,
    Part,
    /// The range lies behind the end.
    Unsatisfiable,
  };
  Kind kind = Kind::Whole;
  /// Of Part: lies within the body and is not empty.
  ByteRange range = {};
};

/// `header` is the field's value, `size` that of the whole body.
RangeWanted rangeWanted(std::string_view header, std::uint64_t size);

}  // namespace web
