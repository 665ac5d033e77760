#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

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

  /// As ODBC reads it: in braces what could not stand without. Names that it
  /// could not read are an error.
  [[nodiscard]] std::string odbcText() const;

 private:
  std::vector<Setting> settings_;
};

/// The values of all secrets, and those that could hold one, which is the case of
/// "Extended Properties" and of a quote that was closed too late. The longest first.
[[nodiscard]] std::vector<std::string> secretsOf(const ConnectionString& string);

}  // namespace ado
