#include "ppt/Text.h"

#include "basic/Encodings.h"
#include "basic/FileBytes.h"

namespace ppt {

std::string textOfUtf16(std::string_view bytes) {
  const basic::FileBytes b(bytes);
  const auto unit = [&b](std::size_t i) { return static_cast<char32_t>(b.little16(2 * i)); };
  std::string text;
  for (std::size_t at = 0; at < bytes.size() / 2;) {
    basic::AppendUtf8(text, basic::DecodeUtf16(unit, bytes.size() / 2, at));
  }
  return text;
}

std::string textOfBytes(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) basic::AppendUtf8(text, static_cast<unsigned char>(c));
  return text;
}

}  // namespace ppt
