#include "web/http/Target.h"

#include <algorithm>
#include <charconv>

#include "basic/Percent.h"
#include "basic/Strings.h"

namespace web {
namespace {

/// As HTML forms write it (WHATWG URL, application/x-www-form-urlencoded).
std::string decoded(std::string_view text) {
  std::string spaced(text);
  std::replace(spaced.begin(), spaced.end(), '+', ' ');
  return basic::PercentDecoded(spaced);
}

}  // namespace

Target targetOf(std::string_view text) {
  Target target;
  for (const std::string_view scheme : {"http://", "https://"}) {
    if (!basic::EqualsIgnoreCase(text.substr(0, scheme.size()), scheme)) continue;
    text.remove_prefix(scheme.size());
    target.host = text.substr(0, text.find_first_of("/?"));
    text.remove_prefix(target.host->size());
    break;
  }
  const std::size_t mark = std::min(text.find('?'), text.size());
  target.path = text.substr(0, mark);
  if (target.host && target.path.empty()) target.path = "/";
  if (mark < text.size()) target.query = text.substr(mark + 1);
  return target;
}

std::optional<int> takeNumber(std::string_view& text) {
  int number = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failed != std::errc() || number < 0) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

std::optional<std::string> queryField(std::string_view query, std::string_view name) {
  while (!query.empty()) {
    const std::string_view pair = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(query.size(), pair.size() + 1));
    const std::size_t equals = pair.find('=');
    if (decoded(pair.substr(0, equals)) == name) {
      return decoded(equals == std::string_view::npos ? "" : pair.substr(equals + 1));
    }
  }
  return std::nullopt;
}

}  // namespace web
