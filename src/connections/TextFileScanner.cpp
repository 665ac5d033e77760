#include "connections/TextFileScanner.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace LF2000 {
namespace {

static_assert(std::endian::native == std::endian::little, "the lowest byte of a word is its first");

/// A bit for each wanted byte. The loops are of a form that compilers turn into
/// vector instructions.
template <class Wanted>
std::uint64_t FindAll(const char* bytes, Wanted wanted) {
  std::array<unsigned char, 64> hits;
  for (std::size_t i = 0; i < hits.size(); ++i) hits[i] = static_cast<unsigned char>(wanted(bytes[i]));

  // The product brings the lowest bits of the eight bytes side by side into the highest byte.
  constexpr std::uint64_t Gather = 0x0102040810204080U;
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < hits.size(); i += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, &hits[i], sizeof word);
    found |= ((word * Gather) >> 56U) << i;
  }
  return found;
}

}  // namespace

/// Goes through the text in blocks from `at` on until there is a wanted byte.
template <class Wanted>
std::size_t TextFileScanner::Search(Block& block, std::size_t at, Wanted wanted) const {
  for (block.begin = at; text_.size() - block.begin >= Block::Size; block.begin += Block::Size) {
    block.found = FindAll(text_.data() + block.begin, wanted);
    if (block.found != 0) return block.begin + static_cast<std::size_t>(std::countr_zero(block.found));
  }
  std::array<char, Block::Size> rest{};  // filled up with NUL, which is never wanted
  std::copy(text_.begin() + static_cast<std::ptrdiff_t>(block.begin), text_.end(), rest.begin());
  block.found = FindAll(rest.data(), wanted);
  return std::min(text_.size(), block.begin + static_cast<std::size_t>(std::countr_zero(block.found)));
}

std::size_t TextFileScanner::NextSeparatorBlock(std::size_t at) {
  return Search(separators_, at, [delimiter = delimiter_](char c) {
    return static_cast<int>(c == delimiter) | static_cast<int>(c == '\n') | static_cast<int>(c == '\r');
  });
}

std::size_t TextFileScanner::NextQuoteBlock(std::size_t at) {
  return Search(quotes_, at, [](char c) { return c == '"'; });
}

std::size_t TextFileScanner::BehindBlanks(std::size_t at) const {
  std::size_t behind = at;
  while (behind != text_.size() && IsBlank(text_[behind])) ++behind;
  return IsRecordEnd(behind) ? behind : at;
}

/// When no quote closes this one, all later runs of quotes have an even length,
/// so a later field that begins with one is closed within its run: in one pass
/// over a text this runs to the end of the text in vain at most once.
TextFileField TextFileScanner::QuotedField(std::size_t opening) {
  TextFileField field;
  for (std::size_t at = NextQuote(opening + 1); at != text_.size(); at = NextQuote(at + 2)) {
    if (at + 1 == text_.size() || text_[at + 1] != '"') {
      field.Quoted = true;
      field.ClosingQuote = at;
      field.End = NextSeparator(at + 1);
      return field;
    }
    field.Doubled = true;
  }
  return {NextSeparator(opening)};
}

TextFileRecord TextFileScanner::Record(std::size_t at) {
  TextFileRecord record;
  for (record.End = Field(at).End; !IsRecordEnd(record.End); ++record.FieldCount) {
    record.End = Field(record.End + 1).End;
  }
  return record;
}

}  // namespace LF2000
