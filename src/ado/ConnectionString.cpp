#include "ado/ConnectionString.h"

#include <algorithm>

#include "basic/Error.h"
#include "basic/Strings.h"

namespace ado {
namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view Mask = "***";
constexpr std::string_view Nested = "Extended Properties";

[[noreturn]] void fail(const std::string& why) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection", "The connection string cannot be read: " + why);
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(Blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

/// Reads settings from the front of a text.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  /// Nothing at the end.
  std::optional<ConnectionString::Setting> next() {
    at_ = text_.find_first_not_of(" \t\r\n;", at_);
    if (at_ == std::string_view::npos) return std::nullopt;
    ConnectionString::Setting setting;
    setting.key = key();
    setting.value = value(setting.key);
    return setting;
  }

 private:
  std::string key() {
    std::string name;
    for (; at_ < text_.size() && text_[at_] != ';'; ++at_) {
      if (text_[at_] == '=') {
        if (at_ + 1 == text_.size() || text_[at_ + 1] != '=') {
          ++at_;
          return std::string(trimmed(name));
        }
        ++at_;
      }
      name += text_[at_];
    }
    // It may be the rest of an unquoted password, so it is not shown.
    fail("part " + std::to_string(part_ + 1) +
         " has no '='. Values that hold a ';' stand in quotes or braces.");
  }

  std::string value(const std::string& name) {
    ++part_;
    at_ = std::min(text_.find_first_not_of(Blanks, at_), text_.size());
    const char opening = at_ < text_.size() ? text_[at_] : ';';
    if (opening != '{' && opening != '"' && opening != '\'') {
      const std::size_t end = std::min(text_.find(';', at_), text_.size());
      std::string value(trimmed(text_.substr(at_, end - at_)));
      at_ = end;
      return value;
    }
    const char closing = opening == '{' ? '}' : opening;
    std::string value;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == closing) {
        if (at_ + 1 == text_.size() || text_[at_ + 1] != closing) {
          ++at_;
          expectEnd(name);
          return value;
        }
        ++at_;
      }
      value += text_[at_];
    }
    fail("the value of '" + name + "' has no closing " + closing + " .");
  }

  void expectEnd(const std::string& name) {
    at_ = std::min(text_.find_first_not_of(Blanks, at_), text_.size());
    if (at_ < text_.size() && text_[at_] != ';') {
      fail("behind the quoted value of '" + name + "' there is more; a quote inside of it is doubled.");
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t part_ = 0;
};

std::string odbcValue(const std::string& value) {
  const bool plain = value.find_first_of(";{}[]()?*!@\"'= \t") == std::string::npos;
  return plain ? value : "{" + basic::Replace(value, "}", "}}") + "}";
}

/// A quoted value as an author would write it.
std::string shownValue(const std::string& value) {
  if (value.find_first_of(";\"'{}") == std::string::npos && trimmed(value) == value) return value;
  return "\"" + basic::Replace(value, "\"", "\"\"") + "\"";
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  Scanner scanner(text);
  while (auto setting = scanner.next()) settings_.push_back(std::move(*setting));
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

std::string ConnectionString::odbcText() const {
  std::string text;
  for (const auto& [key, value] : settings_) text += key + "=" + odbcValue(value) + ";";
  return text;
}

bool isSecret(std::string_view key) {
  const std::string upper = basic::UCase(key);
  return upper == "PWD" || upper == "PASS" || upper.find("PASSWORD") != std::string::npos ||
         upper.find("TOKEN") != std::string::npos || upper.find("SECRET") != std::string::npos;
}

std::string maskedConnectionString(std::string_view text) try {
  const ConnectionString string(text);
  std::string masked;
  for (const auto& [key, value] : string.settings()) {
    if (!masked.empty()) masked += ';';
    masked += key + "=";
    if (isSecret(key)) {
      masked += Mask;
    } else {
      masked += shownValue(basic::EqualsIgnoreCase(key, Nested) ? maskedConnectionString(value) : value);
    }
  }
  return masked;
} catch (const basic::Error&) {
  // Where its parts end is anybody's guess, so nothing of it can be shown.
  return std::string(Mask);
}

std::vector<std::string> secretsOf(const ConnectionString& string) {
  std::vector<std::string> secrets;
  for (const auto& [key, value] : string.settings()) {
    if (isSecret(key) && !value.empty()) secrets.push_back(value);
    if (!basic::EqualsIgnoreCase(key, Nested)) continue;
    try {
      for (std::string& secret : secretsOf(ConnectionString(value))) secrets.push_back(std::move(secret));
    } catch (const basic::Error&) {
      // "Excel 8.0;..." is no list of settings, and goes to no driver.
    }
  }
  return secrets;
}

}  // namespace ado
