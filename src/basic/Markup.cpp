#include "basic/Markup.h"

#include <array>

namespace basic {
namespace {

/// What stands for a character that is not plain.
std::string_view substitute(char c) {
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
    default:
      return {};
  }
}

/// By byte, as pages of charts have a million of them: whether it stands for itself.
constexpr auto Plain = [] {
  std::array<bool, 256> plain{};
  for (std::size_t c = 0; c < plain.size(); ++c) plain[c] = c >= ' ' && c != 0x7F;
  for (const char c : {'\t', '\n'}) plain[static_cast<unsigned char>(c)] = true;
  for (const char c : {'&', '<', '>', '"', '\''}) plain[static_cast<unsigned char>(c)] = false;
  return plain;
}();

}  // namespace

void AppendEscaped(std::string& markup, std::string_view text) {
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (Plain[static_cast<unsigned char>(c)]) continue;
    markup.append(text, from, i - from);
    const bool isFirstOfTwo = c == '\r' && text.substr(i + 1).starts_with('\n');
    if (!isFirstOfTwo) markup += substitute(c);
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
