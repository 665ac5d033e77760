#include "basic/Base64.h"

#include <array>
#include <cstdint>

namespace basic {

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t NoDigit = 64;

constexpr std::array<std::uint8_t, 256> digitValues() {
  std::array<std::uint8_t, 256> values{};
  values.fill(NoDigit);
  for (std::size_t i = 0; i < Alphabet.size(); ++i) {
    values[static_cast<unsigned char>(Alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}

}  // namespace

std::string toBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  const auto at = [&](std::size_t i) -> std::uint32_t {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
  };
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group = at(i) << 16U | at(i + 1) << 8U | at(i + 2);
    text += Alphabet[group >> 18U];
    text += Alphabet[group >> 12U & 63U];
    text += i + 1 < bytes.size() ? Alphabet[group >> 6U & 63U] : '=';
    text += i + 2 < bytes.size() ? Alphabet[group & 63U] : '=';
  }
  return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
  static constexpr auto Values = digitValues();
  if (text.size() % 4 != 0) return std::nullopt;
  while (!text.empty() && text.back() == '=') text.remove_suffix(1);
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3 + 2);
  std::uint32_t group = 0;
  unsigned bits = 0;
  for (const char c : text) {
    const std::uint8_t value = Values[static_cast<unsigned char>(c)];
    if (value == NoDigit) return std::nullopt;
    group = group << 6U | value;
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes += static_cast<char>(group >> bits & 255U);
  }
  return bytes;
}

}  // namespace basic
