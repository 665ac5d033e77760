#include "web/http/SharedBodies.h"

#include <functional>
#include <utility>

namespace web {

SharedBodies::Body SharedBodies::shared(Body body) {
  // Smaller ones cost less than looking for them.
  constexpr std::size_t WorthIt = 4096;
  if (body->size() < WorthIt) return body;
  std::erase_if(known_, [](const auto& entry) { return entry.second.expired(); });
  const std::size_t key = std::hash<std::string>{}(*body);
  const auto [first, last] = known_.equal_range(key);
  for (auto each = first; each != last; ++each) {
    if (Body known = each->second.lock(); known && (known == body || *known == *body)) return known;
  }
  known_.emplace(key, body);
  return body;
}

}  // namespace web
