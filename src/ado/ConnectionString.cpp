// Connection strings as settings, and as text that the driver reads as the same settings.

#include "ado/ConnectionString.h"

#include <algorithm>
#include <utility>

#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Strings.h"

namespace ado {
namespace {

[[noreturn]] void fail(const std::string& why) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection", "The connection string cannot be read: " + why);
}

std::string inBraces(std::string_view value) { return "{" + basic::Replace(value, "}", "}}") + "}"; }

/// A semicolon that a driver takes for the end of the value would add settings to the string.
std::string odbcValue(const ConnectionString::Setting& setting, Braces braces) {
  const auto& [key, value] = setting;
  if (value.find('\0') != std::string::npos) fail("the value of '" + key + "' holds a zero character.");
  if (key == "Driver") return inBraces(value);
  if (key == "DSN" || braces == Braces::None) {
    if (value.find(';') != std::string::npos || basic::StartsWith(value, "{")) {
      fail("the value of '" + key + "' holds a ';' or begins with '{', which the driver cannot be given.");
    }
    return value;
  }
  if (braces == Braces::Single && value.find('}') != std::string::npos) {
    fail("the value of '" + key + "' holds a '}', which the driver cannot be given.");
  }
  const bool isPlain = value.find_first_of(";{}[]()?*!@\"'= \t") == std::string::npos;
  return isPlain ? value : inBraces(value);
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  for (basic::ConnectionSetting& setting : basic::ReadConnectionString(text)) {
    if (!setting.fault.empty()) fail(setting.fault);
    settings_.push_back({std::move(setting.key), std::move(setting.value)});
  }
}

std::optional<std::string> ConnectionString::find(std::initializer_list<std::string_view> keys) const {
  for (const std::string_view key : keys) {
    const auto found = std::find_if(settings_.rbegin(), settings_.rend(), [key](const Setting& setting) {
      return basic::EqualsIgnoreCase(setting.key, key);
    });
    if (found != settings_.rend()) return found->value;
  }
  return std::nullopt;
}

void ConnectionString::set(std::string_view key, std::string_view value) {
  erase(key);
  settings_.push_back({std::string(key), std::string(value)});
}

void ConnectionString::setDefault(std::string_view key, std::string_view value) {
  if (!has(key)) set(key, value);
}

void ConnectionString::erase(std::string_view key) {
  std::erase_if(settings_,
                [key](const Setting& setting) { return basic::EqualsIgnoreCase(setting.key, key); });
}

std::string ConnectionString::odbcText(Braces braces) const {
  std::string front;
  std::string text;
  for (const Setting& setting : settings_) {
    const bool isFirst = setting.key == "Driver" || setting.key == "DSN";
    (isFirst ? front : text) += setting.key + "=" + odbcValue(setting, braces) + ";";
  }
  return front + text;
}

namespace {

void addSecrets(std::vector<std::string>& secrets, std::string_view key, const std::string& value) {
  const bool holdsSecret = basic::MayHoldSecret(value);
  if ((basic::IsSecretKey(key) || holdsSecret) && !value.empty()) secrets.push_back(value);
  if (!holdsSecret) return;
  for (const basic::ConnectionSetting& nested : basic::ReadConnectionString(value)) {
    if (nested.fault.empty()) addSecrets(secrets, nested.key, nested.value);
  }
}

}  // namespace

std::vector<std::string> secretsOf(const ConnectionString& string) {
  std::vector<std::string> secrets;
  for (const auto& [key, value] : string.settings()) addSecrets(secrets, key, value);
  std::sort(secrets.begin(), secrets.end(),
            [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
  return secrets;
}

}  // namespace ado
