#include "connections/TextFileEncoding.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "basic/Encodings.h"
#include "basic/Strings.h"
#include "basic/Utf8.h"

namespace LF2000 {
namespace {

/// Takes characters one by one: only counts their bytes while `out` is null.
struct Utf8Writer {
  char* out = nullptr;
  std::size_t size = 0;

  void Byte(char value) {
    if (out != nullptr) out[size] = value;
    ++size;
  }
  void Character(char32_t c) {
    basic::EncodeUtf8(c, [this](char byte) { Byte(byte); });
  }
};

void DecodeWindows1252(std::string_view bytes, Utf8Writer& writer) {
  for (const char byte : bytes) writer.Character(basic::FromWindows1252(byte));
}

template <bool BigEndian>
void DecodeUtf16(std::string_view bytes, Utf8Writer& writer) {
  const auto unit = [bytes](std::size_t index) {
    const auto first = static_cast<unsigned char>(bytes[2 * index]);
    const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
    return static_cast<char16_t>(BigEndian ? first << 8U | second : second << 8U | first);
  };
  const std::size_t units = bytes.size() / 2;
  for (std::size_t at = 0; at < units;) writer.Character(basic::DecodeUtf16(unit, units, at));
  if (bytes.size() % 2 != 0) writer.Character(basic::ReplacementCharacter);
}

std::size_t SequenceLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

void MendUtf8(std::string_view bytes, Utf8Writer& writer) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::string_view sequence = bytes.substr(at, SequenceLength(bytes[at]));
    if (basic::IsValidUtf8(sequence)) {
      for (const char byte : sequence) writer.Byte(byte);
      at += sequence.size();
    } else {
      writer.Character(basic::ReplacementCharacter);
      ++at;
    }
  }
}

/// Decodes twice: once to know the size, then into a buffer of that size.
TextFileContent Decoded(std::string_view encoding, std::string_view bytes,
                        void (*decode)(std::string_view, Utf8Writer&)) {
  Utf8Writer measure;
  decode(bytes, measure);
  TextFileContent content;
  content.Encoding = encoding;
  content.Bytes.data = std::make_unique_for_overwrite<char[]>(measure.size);
  content.Bytes.size = measure.size;
  Utf8Writer writer{content.Bytes.data.get()};
  decode(bytes, writer);
  return content;
}

/// Files that were put together have marks in their midst. `mark` is where the first one is, npos for none.
void RemoveMarks(host::Bytes& bytes, std::size_t mark) {
  if (mark == std::string_view::npos) return;
  const std::string_view text(bytes.data.get(), bytes.size);
  std::size_t out = mark;
  while (mark != std::string_view::npos) {
    const std::size_t from = mark + basic::Utf8Mark.size();
    mark = text.find(basic::Utf8Mark, from);
    const std::size_t size = std::min(mark, text.size()) - from;
    std::memmove(bytes.data.get() + out, bytes.data.get() + from, size);
    out += size;
  }
  bytes.size = out;
}

std::string_view TextOf(const host::Bytes& bytes) { return {bytes.data.get(), bytes.size}; }

TextFileContent WithoutMarks(TextFileContent content) {
  RemoveMarks(content.Bytes, TextOf(content.Bytes).find(basic::Utf8Mark));
  return content;
}

}  // namespace

TextFileContent DecodeTextFile(host::Bytes bytes) {
  using namespace std::string_view_literals;
  const std::string_view text = TextOf(bytes);
  if (text.starts_with("\xFF\xFE"sv))
    return WithoutMarks(Decoded("UTF-16", text.substr(2), DecodeUtf16<false>));
  if (text.starts_with("\xFE\xFF"sv))
    return WithoutMarks(Decoded("UTF-16", text.substr(2), DecodeUtf16<true>));

  const std::size_t begin = text.starts_with(basic::Utf8Mark) ? basic::Utf8Mark.size() : 0;
  const basic::Utf8Check check = basic::CheckUtf8(text.substr(begin));
  if (check.isValid) {
    if (check.mark != std::string_view::npos) RemoveMarks(bytes, begin + check.mark);
    return {std::move(bytes), begin};
  }
  RemoveMarks(bytes, text.find(basic::Utf8Mark, begin));
  const std::string_view rest = TextOf(bytes).substr(begin);
  return begin != 0 ? Decoded("UTF-8", rest, MendUtf8) : Decoded("Windows-1252", rest, DecodeWindows1252);
}

}  // namespace LF2000
