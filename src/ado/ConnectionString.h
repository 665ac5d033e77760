#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// The settings of a connection string, "key=value;key=value", in their order.
///
/// Values may be enclosed in braces, double or single quotes, the closing one
/// doubled where it belongs to the value; blanks around keys and unquoted values
/// do not count. Keys are found in any case of letters, the last of one name
/// wins. A key may hold an equals sign, doubled (OLE DB's rule).
class ConnectionString {
 public:
  struct Setting {
    std::string key;
    std::string value;
  };

  ConnectionString() = default;
  /// Text that is no list of settings is an error that does not quote it.
  explicit ConnectionString(std::string_view text);

  [[nodiscard]] const std::vector<Setting>& settings() const { return settings_; }
  /// The value of the first of these keys that is there.
  [[nodiscard]] std::optional<std::string> find(std::initializer_list<std::string_view> keys) const;
  [[nodiscard]] bool has(std::string_view key) const { return find({key}).has_value(); }

  /// Replaces the setting of that key or adds it behind the others.
  void set(std::string_view key, std::string_view value);
  /// As set, where there is none.
  void setDefault(std::string_view key, std::string_view value);
  void erase(std::string_view key);

  /// As ODBC reads it: in braces what could not stand without.
  [[nodiscard]] std::string odbcText() const;

 private:
  std::vector<Setting> settings_;
};

/// Whether a setting of that key is a secret: a password or token.
[[nodiscard]] bool isSecret(std::string_view key);

/// The connection string with "***" for every secret, for messages and logs.
[[nodiscard]] std::string maskedConnectionString(std::string_view text);

/// The values of all secrets, those inside of "Extended Properties" too.
[[nodiscard]] std::vector<std::string> secretsOf(const ConnectionString& string);

}  // namespace ado
