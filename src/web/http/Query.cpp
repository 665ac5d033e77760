#include "web/http/Query.h"

#include <algorithm>
#include <charconv>

namespace web {
namespace {

std::string decoded(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned char code = 0;
    if (text[i] == '%' && i + 2 < text.size()) {
      const char* const digits = text.data() + i + 1;
      if (std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
        plain += static_cast<char>(code);
        i += 2;
        continue;
      }
    }
    plain += text[i] == '+' ? ' ' : text[i];
  }
  return plain;
}

}  // namespace

std::optional<std::string> queryField(std::string_view target, std::string_view name) {
  const std::size_t mark = target.find('?');
  if (mark == std::string_view::npos) return std::nullopt;
  std::string_view rest = target.substr(mark + 1);
  while (!rest.empty()) {
    const std::string_view pair = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
    const std::size_t equals = pair.find('=');
    if (decoded(pair.substr(0, equals)) == name) {
      return decoded(equals == std::string_view::npos ? "" : pair.substr(equals + 1));
    }
  }
  return std::nullopt;
}

}  // namespace web
