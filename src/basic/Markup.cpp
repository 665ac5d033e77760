#include "basic/Markup.h"

namespace basic {
namespace {

/// What stands for a character; a null pointer where it stands for itself.
const char* substitute(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    case '\r':
      return "\n";
    case '\t':
    case '\n':
      return nullptr;
    default:
      return (c >= 0 && c < ' ') || c == 0x7F ? "" : nullptr;
  }
}

}  // namespace

void AppendEscaped(std::string& markup, std::string_view text) {
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char* instead = substitute(text[i]);
    if (instead == nullptr) continue;
    markup.append(text, from, i - from);
    const bool isLineEnd = text.substr(i).starts_with("\r\n");
    if (!isLineEnd) markup += instead;
    from = i + 1;
  }
  markup.append(text, from, text.size() - from);
}

std::string Escaped(std::string_view text) {
  std::string markup;
  markup.reserve(text.size());
  AppendEscaped(markup, text);
  return markup;
}

}  // namespace basic
