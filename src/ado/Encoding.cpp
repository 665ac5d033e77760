#include "ado/Encoding.h"

#include "basic/Encodings.h"
#include "basic/Strings.h"
#include "basic/Utf8.h"

namespace ado {
std::string utf8FromUtf16(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    basic::AppendUtf8(utf8, basic::DecodeUtf16([text](std::size_t i) { return text[i]; }, text.size(), at));
  }
  return utf8;
}

std::string utf8FromDriver(std::string_view text) {
  if (basic::IsValidUtf8(text)) return std::string(text);
  std::string utf8;
  for (const char each : text) basic::AppendUtf8(utf8, basic::FromWindows1252(each));
  return utf8;
}

}  // namespace ado
