#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "basic/Utf8.h"

namespace render {

/// What decides which of a run's typefaces a character is set in.
enum class Script : std::uint8_t { Latin, EastAsian, Complex };

/// The script of a character by its Unicode block, or `around` for what all scripts share: spaces, digits,
/// punctuation.
constexpr Script scriptOf(char32_t c, Script around) {
  if (c < 0x41) return around;
  if (c < 0x300) return c == 0xA0 || c == 0xAB || c == 0xB7 || c == 0xBB ? around : Script::Latin;
  if (c >= 0x590 && c < 0x1100) return Script::Complex;   // Hebrew, Arabic, the scripts of India, Thai, ...
  if (c >= 0x1780 && c < 0x1800) return Script::Complex;  // Khmer
  if (c >= 0xFB1D && c < 0xFE00) return Script::Complex;
  if (c >= 0xFE70 && c < 0xFEFF) return Script::Complex;
  if (c >= 0x1100 && c < 0x1200) return Script::EastAsian;  // Hangul
  if (c >= 0x2000 && c < 0x2070) return around;
  if (c >= 0x2E80 && c < 0xA4D0) return Script::EastAsian;
  if (c >= 0xAC00 && c < 0xD7B0) return Script::EastAsian;
  if (c >= 0xF900 && c < 0xFB00) return Script::EastAsian;
  if (c >= 0xFE30 && c < 0xFE70) return Script::EastAsian;
  if (c >= 0xFF00 && c < 0xFFF0) return Script::EastAsian;
  if (c >= 0x20000 && c < 0x40000) return Script::EastAsian;
  return Script::Latin;
}

/// Calls `take(piece, script)` for each stretch of one script; what all scripts share goes with what stands
/// before it. Pieces are parts of `text`, which is UTF-8.
template <typename Take>
void splitByScript(std::string_view text, Take take) {
  std::size_t start = 0;
  Script current = Script::Latin;
  bool decided = false;
  for (std::size_t at = 0; at < text.size();) {
    const auto before = at;
    // Nearly all text is ASCII.
    const auto byte = static_cast<unsigned char>(text[at]);
    const char32_t c = byte < 0x80 ? (++at, byte) : basic::DecodeUtf8(text, at);
    const auto script = scriptOf(c, current);
    if (script != current && decided) {
      take(text.substr(start, before - start), current);
      start = before;
    }
    decided = decided || scriptOf(c, Script::Latin) == scriptOf(c, Script::Complex);
    current = script;
  }
  if (start < text.size()) take(text.substr(start), current);
}

}  // namespace render
