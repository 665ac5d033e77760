#include "web/show/ViewsInUse.h"

#include <algorithm>

namespace web {

bool ViewsInUse::use(const std::string& name, const View& view, Time now) {
  if (!contains(name) && !hasRoomFor(view)) return false;
  uses_[name] = {view, now + lease};
  return true;
}

bool ViewsInUse::hasRoomFor(const View& view) const {
  const auto isOfNothing = [](const View& each) { return each.kind != View::Kind::Show && each.slide == 0; };
  const auto nothings = std::count_if(uses_.begin(), uses_.end(),
                                      [&](const auto& entry) { return isOfNothing(entry.second.view); });
  return uses_.size() < most && (!isOfNothing(view) || static_cast<std::size_t>(nothings) < mostOfNothing);
}

std::vector<std::string> ViewsInUse::expire(Time now) {
  std::vector<std::string> gone;
  std::erase_if(uses_, [&](const auto& entry) {
    if (now < entry.second.until) return false;
    gone.push_back(entry.first);
    return true;
  });
  return gone;
}

void ViewsInUse::resolve(const std::function<View(const std::string& name)>& view) {
  for (auto& [name, use] : uses_) use.view = view(name);
}

std::vector<std::string> ViewsInUse::namesOf(const View& view) const {
  std::vector<std::string> names;
  for (const auto& [name, use] : uses_) {
    if (use.view == view) names.push_back(name);
  }
  return names;
}

std::optional<View> ViewsInUse::find(std::string_view name) const {
  const auto found = uses_.find(name);
  return found == uses_.end() ? std::nullopt : std::optional(found->second.view);
}

std::vector<std::string> ViewsInUse::names() const {
  std::vector<std::string> names;
  for (const auto& [name, use] : uses_) names.push_back(name);
  return names;
}

}  // namespace web
