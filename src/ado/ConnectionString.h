#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// How a driver reads a value that stands in braces.
enum class Braces {
  /// As ODBC has it: up to the closing one, which is doubled inside.
  Doubled,
  /// Up to the first closing one.
  Single,
  /// Not at all: a value ends with the first semicolon.
  None,
};

/// The settings of a connection string in their order, as
/// basic::ReadConnectionString reads them. Keys are found in any case of letters,
/// the last of one name wins.
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

  /// As the driver reads it, Driver or DSN first. What it would read as something
  /// else is an error that names the setting.
  [[nodiscard]] std::string odbcText(Braces braces) const;

 private:
  std::vector<Setting> settings_;
};

/// The values of all secrets, and those that could hold one, which is the case of
/// "Extended Properties" and of a quote that was closed too late. The longest first.
[[nodiscard]] std::vector<std::string> secretsOf(const ConnectionString& string);

}  // namespace ado
