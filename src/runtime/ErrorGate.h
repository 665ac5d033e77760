#pragma once

#include <map>
#include <string>
#include <string_view>

namespace LF2000 {

/// Holds back errors that repeat: what fails on every tick is worth one line in
/// the log when it begins and another when its reason changes, not one a tick.
class ErrorGate {
 public:
  /// Whether this failure of `what` is news.
  [[nodiscard]] bool Admits(std::string_view what, std::string_view description) {
    const auto known = reported_.find(what);
    if (known != reported_.end() && known->second == description) return false;
    reported_.insert_or_assign(std::string(what), std::string(description));
    return true;
  }

  /// `what` succeeded: its next failure is news again. Whether it had failed.
  [[nodiscard]] bool Clear(std::string_view what) {
    if (reported_.empty()) return false;
    const auto known = reported_.find(what);
    if (known == reported_.end()) return false;
    reported_.erase(known);
    return true;
  }

 private:
  std::map<std::string, std::string, std::less<>> reported_;
};

}  // namespace LF2000
