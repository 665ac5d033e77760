#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace app {

/// Which versions of decks lie in the cache, and which of them somebody keeps there because they are on show.
/// Any thread may call it.
class KeptVersions {
 public:
  /// Keeps one there for as long as somebody holds the answer; null when it is not there.
  [[nodiscard]] std::shared_ptr<const void> keep(const std::string& version);

  void add(const std::string& version, std::int64_t shownAt);
  /// Nobody gets it any more. False, and nothing happens, while somebody keeps it.
  [[nodiscard]] bool remove(const std::string& version);
  /// When it was asked for last, in seconds since 1970; now, while somebody keeps it.
  [[nodiscard]] std::int64_t shownAt(const std::string& version);
  [[nodiscard]] bool isKept(const std::string& version);

 private:
  struct Kept {
    std::weak_ptr<const void> holders;
    std::int64_t shownAt = 0;
  };
  std::mutex mutex_;
  std::map<std::string, Kept> versions_;
};

}  // namespace app
