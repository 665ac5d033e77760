#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// A screen that may look.
struct KnownScreen {
  /// Printable UTF-8; no two screens have the same.
  std::string name;
  /// Stands for its token, and tells nothing of it: another token of that screen has another one.
  std::string key;
};

/// Who may look, where that takes a token of one's own. The program implements it; it is asked on the
/// server's thread and answers at once.
class KnownScreens {
 public:
  virtual ~KnownScreens() = default;
  /// Whose token it is; takes the same time for any wrong one.
  [[nodiscard]] virtual std::optional<KnownScreen> withToken(std::string_view token) const = 0;
  /// What the screen with this key is called now; nothing when it is not known any more.
  [[nodiscard]] virtual std::optional<std::string> nameOf(std::string_view key) const = 0;
  /// Of all screens, in the order of their list.
  [[nodiscard]] virtual std::vector<std::string> names() const = 0;
};

}  // namespace web
