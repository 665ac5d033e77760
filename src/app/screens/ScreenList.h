#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace app {

/// The screens that may look at a show, as their file lists them: a line for each with the SHA-256 of its
/// token (64 hexadecimal digits), a blank and its name. Empty lines and those that begin with "#" are notes,
/// and stay.
class ScreenList {
 public:
  struct Screen {
    std::string name;
    /// Small letters.
    std::string digest;
    /// From 1.
    std::size_t line = 0;
  };

  ScreenList() = default;
  /// Throws basic::Error that tells the line and what is wrong with it: no such line as above, a name that is
  /// none, a name or a token that is there twice.
  explicit ScreenList(const std::string& text);

  [[nodiscard]] const std::vector<Screen>& screens() const { return screens_; }
  /// Throws basic::Error for a name that is none, or is there already, case aside.
  void add(std::string_view name, std::string_view digest);
  /// Throws basic::Error when there is none of that name.
  void remove(std::string_view name);
  [[nodiscard]] std::string text() const;

  /// The screen whose token has this digest, in small letters; null when there is none. A list may have many
  /// thousands, and each request of each screen asks.
  [[nodiscard]] const Screen* withDigest(const std::string& digest) const;

 private:
  using Index = std::unordered_map<std::string, std::size_t>;

  void take(const std::string& line);
  [[nodiscard]] const Screen* withName(std::string_view name) const;
  [[nodiscard]] const Screen* at(const Index& index, const std::string& key) const;

  std::vector<std::string> lines_;
  std::vector<Screen> screens_;
  /// By their names in capital letters.
  Index names_;
  Index digests_;
};

/// What people may call a screen: 1 to 100 bytes of UTF-8 without control characters, and without blanks at
/// its ends. Throws basic::Error.
void requireScreenName(std::string_view name);

}  // namespace app
