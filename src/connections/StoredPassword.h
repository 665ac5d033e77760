#pragma once

#include <string>
#include <string_view>

namespace LF2000 {

/// The connection string of a presentation, parted into what may be shown and the secrets that may not
/// (basic::IsSecretKey). Secrets leave this object only into a connection string that signs in to the same
/// place as before.
class StoredPassword {
 public:
  StoredPassword() = default;
  explicit StoredPassword(std::string connectionString);

  /// The connection string without its secrets. Empty where nobody can tell for certain what in it is one:
  /// then IsWithheld.
  [[nodiscard]] const std::string& Shown() const { return shown_; }
  [[nodiscard]] bool IsWithheld() const { return isWithheld_; }
  [[nodiscard]] bool IsSet() const { return !secrets_.empty(); }

  /// Whether the secrets may go with that text: every setting but those that change neither server nor
  /// account, nor the way to them, is what it was.
  [[nodiscard]] bool Fits(std::string_view shown) const;
  /// The text with the secrets, which it must fit. The string as it was stored for Shown().
  [[nodiscard]] std::string Join(std::string_view shown) const;

 private:
  std::string stored_;
  std::string shown_;
  /// As they stand in it: "Password={…};".
  std::string secrets_;
  bool isWithheld_ = false;
};

/// Whether some setting of the text is a secret.
[[nodiscard]] bool HoldsPassword(std::string_view connectionString);

/// The text with a password that was typed, in braces; as it is without one.
[[nodiscard]] std::string WithPassword(std::string_view shown, std::string_view password);

}  // namespace LF2000
