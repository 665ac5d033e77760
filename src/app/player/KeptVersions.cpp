#include "app/player/KeptVersions.h"

#include <ctime>

namespace app {

std::shared_ptr<const void> KeptVersions::keep(const std::string& version) {
  const std::lock_guard lock(mutex_);
  const auto found = versions_.find(version);
  if (found == versions_.end()) return nullptr;
  found->second.shownAt = std::time(nullptr);
  auto holders = found->second.holders.lock();
  if (!holders) found->second.holders = holders = std::make_shared<const std::string>(version);
  return holders;
}

void KeptVersions::add(const std::string& version, std::int64_t shownAt) {
  const std::lock_guard lock(mutex_);
  versions_.try_emplace(version, Kept{{}, shownAt});
}

bool KeptVersions::remove(const std::string& version) {
  const std::lock_guard lock(mutex_);
  const auto found = versions_.find(version);
  if (found == versions_.end()) return true;
  if (!found->second.holders.expired()) return false;
  versions_.erase(found);
  return true;
}

std::int64_t KeptVersions::shownAt(const std::string& version) {
  const std::lock_guard lock(mutex_);
  const auto found = versions_.find(version);
  if (found == versions_.end()) return 0;
  if (!found->second.holders.expired()) found->second.shownAt = std::time(nullptr);
  return found->second.shownAt;
}

bool KeptVersions::isKept(const std::string& version) {
  const std::lock_guard lock(mutex_);
  const auto found = versions_.find(version);
  return found != versions_.end() && !found->second.holders.expired();
}

}  // namespace app
