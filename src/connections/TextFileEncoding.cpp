#include "connections/TextFileEncoding.h"

#include <array>
#include <cstdint>
#include <memory>
#include <utility>

#include "basic/Strings.h"

namespace LF2000 {
namespace {

constexpr char32_t Replacement = 0xFFFD;

/// Characters of Windows-1252 at 0x80 to 0x9F; the others have their own number.
constexpr std::array<char32_t, 32> Windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Takes characters one by one: only counts their bytes while `out` is null.
struct Utf8Writer {
  char* out = nullptr;
  std::size_t size = 0;

  void Byte(char32_t value) {
    if (out != nullptr) out[size] = static_cast<char>(value);
    ++size;
  }
  void Character(char32_t c) {
    if (c < 0x80) {
      Byte(c);
    } else if (c < 0x800) {
      Byte(0xC0U | (c >> 6U));
      Byte(0x80U | (c & 0x3FU));
    } else {
      if (c < 0x10000) {
        Byte(0xE0U | (c >> 12U));
      } else {
        Byte(0xF0U | (c >> 18U));
        Byte(0x80U | ((c >> 12U) & 0x3FU));
      }
      Byte(0x80U | ((c >> 6U) & 0x3FU));
      Byte(0x80U | (c & 0x3FU));
    }
  }
};

void DecodeWindows1252(std::string_view bytes, Utf8Writer& writer) {
  for (const char byte : bytes) {
    const auto number = static_cast<unsigned char>(byte);
    writer.Character(number >= 0x80 && number < 0xA0 ? Windows1252[number - 0x80U] : number);
  }
}

template <bool BigEndian>
void DecodeUtf16(std::string_view bytes, Utf8Writer& writer) {
  const auto unit = [bytes](std::size_t at) -> char32_t {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return BigEndian ? static_cast<char32_t>(first << 8U | second)
                     : static_cast<char32_t>(second << 8U | first);
  };
  const auto isHigh = [](char32_t u) { return u >= 0xD800 && u < 0xDC00; };
  const auto isLow = [](char32_t u) { return u >= 0xDC00 && u < 0xE000; };

  std::size_t at = 0;
  for (; bytes.size() - at >= 2; at += 2) {
    const char32_t first = unit(at);
    if (isHigh(first) && bytes.size() - at >= 4 && isLow(unit(at + 2))) {
      writer.Character(0x10000 + ((first - 0xD800) << 10U) + (unit(at + 2) - 0xDC00));
      at += 2;
    } else {
      writer.Character(isHigh(first) || isLow(first) ? Replacement : first);
    }
  }
  if (at != bytes.size()) writer.Character(Replacement);
}

std::size_t SequenceLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

void MendUtf8(std::string_view bytes, Utf8Writer& writer) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::string_view sequence = bytes.substr(at, SequenceLength(bytes[at]));
    if (basic::IsValidUtf8(sequence)) {
      for (const char byte : sequence) writer.Byte(static_cast<unsigned char>(byte));
      at += sequence.size();
    } else {
      writer.Character(Replacement);
      ++at;
    }
  }
}

/// Decodes twice: once to know the size, then into a buffer of that size.
TextFileContent Decoded(std::string_view bytes, void (*decode)(std::string_view, Utf8Writer&)) {
  Utf8Writer measure;
  decode(bytes, measure);
  TextFileContent content;
  content.Bytes.data = std::make_unique_for_overwrite<char[]>(measure.size);
  content.Bytes.size = measure.size;
  Utf8Writer writer{content.Bytes.data.get()};
  decode(bytes, writer);
  return content;
}

}  // namespace

TextFileContent DecodeTextFile(host::Bytes bytes) {
  using namespace std::string_view_literals;
  const std::string_view text(bytes.data.get(), bytes.size);
  if (text.starts_with("\xFF\xFE"sv)) return Decoded(text.substr(2), DecodeUtf16<false>);
  if (text.starts_with("\xFE\xFF"sv)) return Decoded(text.substr(2), DecodeUtf16<true>);

  const bool marked = text.starts_with("\xEF\xBB\xBF"sv);
  if (basic::IsValidUtf8(text)) return {std::move(bytes), marked ? std::size_t{3} : 0};
  return marked ? Decoded(text.substr(3), MendUtf8) : Decoded(text, DecodeWindows1252);
}

}  // namespace LF2000
