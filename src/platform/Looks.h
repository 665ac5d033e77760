#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "host/drives.h"

namespace platform {

/// Looks at files that are repeated every second or so. While another machine
/// takes its time over one, what was seen last stands, so that a tick with many
/// sources is not held up by one of them.
template <typename Result>
class Looks {
 public:
  /// What the work returns, for that path, which `key` stands for. Throws what the
  /// work throws, and what host::Drives does for a drive that does not answer.
  Result at(const std::string& key, const std::string& path, std::function<Result()> work) {
    host::Drives* const drives = host::Current().drives;
    if (drives == nullptr || drives->IsLocal(path)) return work();
    // Names may be ever new; who is forgotten is looked at as for the first time.
    constexpr std::size_t Most = 10000;
    if (looks_.size() >= Most && !looks_.contains(key)) looks_.clear();
    std::shared_ptr<Look>& known = looks_[key];
    if (!known) known = std::make_shared<Look>();
    const std::shared_ptr<Look> look = known;
    try {
      // What was asked at an earlier look may be old by now.
      const bool isOld = look->underWay != nullptr;
      bool isAnswered = ask(*drives, *look, path, work);
      if (isOld && isAnswered) isAnswered = ask(*drives, *look, path, work);
      while (!isAnswered && !look->seen) isAnswered = ask(*drives, *look, path, work);
    } catch (...) {
      look->seen.reset();
      throw;
    }
    return *look->seen;
  }

 private:
  struct Look {
    std::optional<Result> seen;
    std::shared_ptr<void> underWay;
    std::shared_ptr<std::optional<Result>> answer;
  };

  static bool ask(host::Drives& drives, Look& look, const std::string& path,
                  const std::function<Result()>& work) {
    // The loop may come here for the same look while this one waits.
    std::shared_ptr<void> underWay = std::exchange(look.underWay, nullptr);
    const auto answer = underWay != nullptr ? look.answer : std::make_shared<std::optional<Result>>();
    if (drives.AskBriefly(path, underWay, [answer, work](const auto&) { *answer = work(); })) {
      look.seen = *answer;
      return true;
    }
    look.underWay = std::move(underWay);
    look.answer = answer;
    return false;
  }

  std::unordered_map<std::string, std::shared_ptr<Look>> looks_;
};

}  // namespace platform
