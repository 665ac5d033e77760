#include "web/http/Cookie.h"

#include <algorithm>

namespace web {

std::string_view cookieNamed(std::string_view header, std::string_view name) {
  while (!header.empty()) {
    std::string_view pair = header.substr(0, header.find(';'));
    header.remove_prefix(std::min(header.size(), pair.size() + 1));
    pair.remove_prefix(std::min(pair.find_first_not_of(' '), pair.size()));
    if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=') {
      return pair.substr(name.size() + 1);
    }
  }
  return {};
}

}  // namespace web
