#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Finding the fields of a delimited text. Everything that reads fields goes
// through ScanField, so that all agree on what a quoted field is.

namespace LF2000 {

inline bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

/// A text that is not split has this delimiter: no field ends at it, since its line does.
inline constexpr char NoDelimiter = '\n';

/// The first delimiter or line end at or after `at`, or `end`. Eight bytes a step.
inline const char* FindSeparator(const char* at, const char* end, char delimiter) {
  constexpr std::uint64_t Every = 0x0101010101010101U;
  constexpr std::uint64_t High = Every * 0x80U;
  constexpr std::uint64_t Low = Every * 0x7FU;
  const std::uint64_t delimiters = Every * static_cast<unsigned char>(delimiter);

  for (; end - at >= 8; at += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    // The high bit of a byte is set where the byte is below 14, which covers
    // the line ends and TAB, or is the delimiter. No carry leaves a byte.
    const std::uint64_t difference = word ^ delimiters;
    std::uint64_t found =
        (~(((word & Low) + Every * (0x80U - 14U)) | word) | ~(((difference & Low) + Low) | difference)) &
        High;
    while (found != 0) {
      const int bit =
          std::endian::native == std::endian::little ? std::countr_zero(found) : std::countl_zero(found);
      const char* const candidate = at + bit / 8;
      if (*candidate == delimiter || IsLineEnd(*candidate)) return candidate;
      found &= ~(std::endian::native == std::endian::little ? std::uint64_t{1} << bit : High >> bit);
    }
  }
  while (at != end && *at != delimiter && !IsLineEnd(*at)) ++at;
  return at;
}

/// A field as it stands in the text.
struct TextFileField {
  /// The delimiter or line end behind it, or the end of the text.
  const char* End;
  /// Of a quoted field; null otherwise. What follows it up to End belongs to
  /// the field too.
  const char* ClosingQuote = nullptr;
};

/// The quote that closes the one at `opening`, doubled ones left out; null if
/// none does.
///
/// When none does, all later runs of quotes have an even length, so a later
/// field that begins with one is closed within its run: in one pass over a text
/// this search runs to the end of the text in vain at most once.
const char* FindClosingQuote(const char* opening, const char* end);

/// The field that begins at `at`, quoted as RFC 4180 has it. A quote that is
/// never closed, and one inside an unquoted field, is a character like others.
inline TextFileField ScanField(const char* at, const char* end, char delimiter) {
  if (at != end && *at == '"') {
    if (const char* const closing = FindClosingQuote(at, end)) {
      return {FindSeparator(closing + 1, end, delimiter), closing};
    }
  }
  return {FindSeparator(at, end, delimiter)};
}

struct TextFileRecord {
  /// The line end behind it, or the end of the text.
  const char* End;
  std::size_t FieldCount;
};

/// The record that begins at `at`, which is not the end of the text.
inline TextFileRecord ScanRecord(const char* at, const char* end, char delimiter) {
  TextFileRecord record{ScanField(at, end, delimiter).End, 1};
  while (record.End != end && !IsLineEnd(*record.End)) {
    record.End = ScanField(record.End + 1, end, delimiter).End;
    ++record.FieldCount;
  }
  return record;
}

inline const char* SkipLineEnds(const char* at, const char* end) {
  while (at != end && IsLineEnd(*at)) ++at;
  return at;
}

}  // namespace LF2000
