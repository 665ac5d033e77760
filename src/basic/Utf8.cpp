// UTF-8 is checked, read, written and counted here, whole files in words of several bytes.

#include "basic/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "basic/Strings.h"

namespace basic {
namespace {

constexpr bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The end of the run of ASCII that begins at `at`, perhaps some bytes early.
const unsigned char* skipAscii(const unsigned char* at, const unsigned char* end) {
  constexpr std::uint64_t HighBits = 0x8080808080808080U;
  std::array<std::uint64_t, 4> words;
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof words); at += sizeof words) {
    std::memcpy(words.data(), at, sizeof words);
    if (((words[0] | words[1] | words[2] | words[3]) & HighBits) != 0) break;
  }
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof words[0]); at += sizeof words[0]) {
    std::memcpy(words.data(), at, sizeof words[0]);
    if ((words[0] & HighBits) != 0) break;
  }
  while (at != end && *at < 0x80) ++at;
  return at;
}

/// Length of the well-formed sequence that begins with a non-ASCII byte at
/// `at`, 0 if there is none: the table of well-formed byte sequences of the
/// Unicode Standard (3.9, table 3-7), which leaves out overlong forms,
/// surrogates and everything above U+10FFFF.
std::ptrdiff_t sequenceLength(const unsigned char* at, const unsigned char* end) {
  const unsigned lead = at[0];
  const std::ptrdiff_t left = end - at;
  const auto continues = [at](std::ptrdiff_t i) { return (at[i] & 0xC0U) == 0x80U; };
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return left >= 2 && continues(1) ? 2 : 0;
  if (lead < 0xF0) {
    const unsigned lowest = lead == 0xE0 ? 0xA0 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : 0xBF;
    return left >= 3 && at[1] >= lowest && at[1] <= highest && continues(2) ? 3 : 0;
  }
  if (lead > 0xF4) return 0;
  const unsigned lowest = lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xF4 ? 0x8F : 0xBF;
  return left >= 4 && at[1] >= lowest && at[1] <= highest && continues(2) && continues(3) ? 4 : 0;
}

}  // namespace

Utf8Check CheckUtf8(std::string_view bytes) {
  const auto* const begin = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* at = begin;
  const unsigned char* const end = at + bytes.size();
  Utf8Check check;
  while (at != end) {
    if (*at < 0x80) {
      at = skipAscii(at, end);
      continue;
    }
    const std::ptrdiff_t length = sequenceLength(at, end);
    if (length == 0) {
      check.isValid = false;
      return check;
    }
    const bool isMark = length == 3 && at[0] == 0xEF && at[1] == 0xBB && at[2] == 0xBF;
    if (isMark && check.mark == std::string_view::npos) check.mark = static_cast<std::size_t>(at - begin);
    at += length;
  }
  return check;
}

bool IsValidUtf8(std::string_view bytes) { return CheckUtf8(bytes).isValid; }

char32_t DecodeUtf8(std::string_view text, std::size_t& at) {
  const auto* const first = reinterpret_cast<const unsigned char*>(text.data()) + at;
  if (*first < 0x80) {
    ++at;
    return *first;
  }
  const auto tails = *first < 0xC2 || *first > 0xF4 ? 0U : *first < 0xE0 ? 1U : *first < 0xF0 ? 2U : 3U;
  char32_t c = *first & (0x3FU >> tails);
  std::size_t length = 1;
  for (; length <= tails && at + length < text.size() && isContinuation(text[at + length]); ++length) {
    c = c << 6U | (first[length] & 0x3FU);
  }
  const bool isWell = sequenceLength(first, first + length) == static_cast<std::ptrdiff_t>(length);
  at += length;
  return isWell ? c : ReplacementCharacter;
}

void AppendUtf8(std::string& text, char32_t c) {
  EncodeUtf8(c, [&text](char byte) { text += byte; });
}

std::size_t Len(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::string_view Left(std::string_view text, std::size_t count) {
  if (count >= text.size()) return text;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isContinuation(text[i])) continue;
    if (count == 0) return text.substr(0, i);
    --count;
  }
  return text;
}

}  // namespace basic
