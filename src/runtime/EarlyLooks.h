#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace LF2000 {

/// Which changes of files are worth a look before its time: those of a file that changes up to
/// four times a second, and twenty in quick succession. One that goes on changing without rest
/// is left to the interval, and so costs no more than it would without early looks. Times are
/// those of the clock's TickCount, in milliseconds.
class EarlyLooks {
 public:
  /// Between the end of a look and the next early one.
  static constexpr std::int64_t ShortestPause = 50;

  /// The file has changed.
  [[nodiscard]] bool IsWorthwhile(const std::string& path, std::int64_t now) {
    File& file = files_[path];
    const std::int64_t rested = now - std::max(file.changed, looked_) - ShortestRest;
    file.patience = std::min(Most, file.patience + std::max<std::int64_t>(rested, 0));
    file.changed = now;
    if (file.patience < Cost) return false;
    file.patience -= Cost;
    return true;
  }
  /// The files have been looked at.
  void Looked(std::int64_t now) { looked_ = now; }
  /// Milliseconds until the next early look may be.
  [[nodiscard]] std::int64_t Pause(std::int64_t now) const {
    return std::clamp<std::int64_t>(looked_ + ShortestPause - now, 1, ShortestPause);
  }
  /// What is known of other files is forgotten.
  void KeepOnly(const std::set<std::string>& paths) {
    std::erase_if(files_, [&](const auto& file) { return !paths.contains(file.first); });
  }

 private:
  /// A shorter one earns no patience, and an early look costs as much of it.
  static constexpr std::int64_t ShortestRest = 80;
  static constexpr std::int64_t Cost = 80;
  static constexpr std::int64_t Most = 20 * Cost;
  struct File {
    std::int64_t patience = Most;
    std::int64_t changed = 0;
  };
  std::map<std::string, File> files_;
  std::int64_t looked_ = 0;
};

}  // namespace LF2000
