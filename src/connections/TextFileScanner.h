#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Finding the fields of a delimited text. Everything that reads fields goes
// through TextFileScanner, so that all agree on what a quoted field is. Places
// in the text are offsets of bytes.

namespace LF2000 {

inline bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

/// A text that is not split has this delimiter: no field ends at it, since its line does.
inline constexpr char NoDelimiter = '\n';

/// A field as it stands in the text.
struct TextFileField {
  /// The delimiter or line end behind it, or the end of the text.
  std::size_t End = 0;
  bool Quoted = false;
  /// Of a quoted field. What follows it up to End belongs to the field too.
  std::size_t ClosingQuote = 0;
  /// Whether a quoted field holds doubled quotes.
  bool Doubled = false;
};

struct TextFileRecord {
  /// The line end behind it, or the end of the text.
  std::size_t End = 0;
  std::size_t FieldCount = 1;
};

/// Finds fields. The text may change up to the end of the field found last.
class TextFileScanner {
 public:
  TextFileScanner(std::string_view text, char delimiter) : text_(text), delimiter_(delimiter) {}

  /// The field that begins at `at`, quoted as RFC 4180 has it. A quote that is
  /// never closed, and one inside an unquoted field, is a character like others.
  TextFileField Field(std::size_t at) {
    if (at != text_.size() && text_[at] == '"') return QuotedField(at);
    return {NextSeparator(at)};
  }

  /// The record that begins at `at`, which is not the end of the text.
  TextFileRecord Record(std::size_t at);

  /// Whether a field that ends at `at` is the last of its record.
  [[nodiscard]] bool IsRecordEnd(std::size_t at) const { return at == text_.size() || IsLineEnd(text_[at]); }

  /// Where the next record begins: behind line ends and lines that hold nothing, or blanks alone where the
  /// text has a delimiter.
  [[nodiscard]] std::size_t NextRecord(std::size_t at) const {
    for (;;) {
      while (at != text_.size() && IsLineEnd(text_[at])) ++at;
      if (at == text_.size() || !IsBlank(text_[at])) return at;
      const std::size_t behind = BehindBlanks(at);
      if (behind == at) return at;
      at = behind;
    }
  }

 private:
  /// Characters are looked for in 64 bytes of the text at a time and noted in
  /// one bit each, so that the next one is mostly known already.
  struct Block {
    static constexpr std::size_t Size = 64;
    std::size_t begin = std::size_t{0} - Size;  // none yet: no offset lies in it
    std::uint64_t found = 0;

    /// How far from `at` the next one in this block is; Size if there is none.
    [[nodiscard]] std::size_t DistanceFrom(std::size_t at) const {
      const std::size_t place = at - begin;
      const std::uint64_t ahead = place < Size ? found >> place : 0;
      return ahead != 0 ? static_cast<std::size_t>(std::countr_zero(ahead)) : Size;
    }
  };

  /// Nothing to see, and no delimiter.
  [[nodiscard]] bool IsBlank(char c) const {
    return (c == ' ' || c == '\t') && c != delimiter_ && delimiter_ != NoDelimiter;
  }
  /// The end of a line that holds blanks alone from `at` on; `at` itself when there is more in it.
  [[nodiscard]] std::size_t BehindBlanks(std::size_t at) const;
  std::size_t NextSeparator(std::size_t at) {
    const std::size_t distance = separators_.DistanceFrom(at);
    return distance != Block::Size ? at + distance : NextSeparatorBlock(at);
  }
  std::size_t NextQuote(std::size_t at) {
    const std::size_t distance = quotes_.DistanceFrom(at);
    return distance != Block::Size ? at + distance : NextQuoteBlock(at);
  }
  std::size_t NextSeparatorBlock(std::size_t at);
  std::size_t NextQuoteBlock(std::size_t at);
  template <class Wanted>
  std::size_t Search(Block& block, std::size_t at, Wanted wanted) const;
  TextFileField QuotedField(std::size_t opening);

  std::string_view text_;
  char delimiter_;
  Block separators_;
  Block quotes_;
};

}  // namespace LF2000
