#include "web/show/ViewsInUse.h"

namespace web {

bool ViewsInUse::use(const std::string& name, const View& view, Time now) {
  if (uses_.size() >= most && !contains(name)) return false;
  uses_[name] = {view, now + lease};
  return true;
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
