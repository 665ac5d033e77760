// Connection strings are taken apart, changed in their place, and shown without their secrets.

#include "basic/ConnectionString.h"

#include <algorithm>

#include "basic/Strings.h"

namespace basic {
namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view Mask = "***";

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(Blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

/// The character that ends a value which begins with this one; 0 for none.
char ClosingOf(char opening) {
  if (opening == '{') return '}';
  return opening == '"' || opening == '\'' ? opening : '\0';
}

/// Reads settings from the front of a text.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  /// Goes to the next setting; false at the end.
  bool Find() {
    at_ = text_.find_first_not_of(" \t\r\n;", at_);
    ++part_;
    return at_ != std::string_view::npos;
  }

  ConnectionSetting Next() {
    ConnectionSetting setting;
    if (!ReadKey(setting)) return setting;
    at_ = std::min(text_.find_first_not_of(Blanks, at_), text_.size());
    setting.valueAt = at_;
    const char closing = at_ < text_.size() ? ClosingOf(text_[at_]) : '\0';
    if (closing == '\0') {
      setting.value = WithoutBlanks(Rest());
      setting.valueSize = setting.value.size();
    } else {
      ReadQuoted(setting, closing);
    }
    return setting;
  }

 private:
  /// Up to the next semicolon, which it goes to.
  std::string_view Rest() {
    const std::size_t from = at_;
    at_ = std::min(text_.find(';', at_), text_.size());
    return text_.substr(from, at_ - from);
  }

  bool ReadKey(ConnectionSetting& setting) {
    std::string name;
    for (; at_ < text_.size() && text_[at_] != ';'; ++at_) {
      if (text_[at_] == '=') {
        if (at_ + 1 == text_.size() || text_[at_ + 1] != '=') {
          ++at_;
          setting.key = WithoutBlanks(name);
          return true;
        }
        ++at_;
      }
      name += text_[at_];
    }
    // It may be the rest of an unquoted password, so it is not shown.
    setting.fault =
        "part " + std::to_string(part_) + " has no '='. Values that hold a ';' stand in quotes or braces.";
    return false;
  }

  void ReadQuoted(ConnectionSetting& setting, char closing) {
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == closing) {
        if (at_ + 1 == text_.size() || text_[at_ + 1] != closing) {
          setting.valueSize = ++at_ - setting.valueAt;
          if (!WithoutBlanks(Rest()).empty()) {
            setting.fault = "behind the quoted value of '" + setting.key +
                            "' there is more; a quote inside of it is doubled.";
          }
          return;
        }
        ++at_;
      }
      setting.value += text_[at_];
    }
    setting.valueSize = at_ - setting.valueAt;
    setting.fault = "the value of '" + setting.key + "' has no closing " + closing + " .";
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t part_ = 0;
};

std::string Quoted(std::string_view value, char opening, char closing) {
  return opening + Replace(value, {&closing, 1}, std::string(2, closing)) + closing;
}

void Put(std::string& text, const ConnectionSetting& setting, std::string_view value) {
  text.replace(setting.valueAt, setting.valueSize, value);
}

}  // namespace

std::vector<ConnectionSetting> ReadConnectionString(std::string_view text) {
  std::vector<ConnectionSetting> settings;
  for (Scanner scanner(text); scanner.Find();) settings.push_back(scanner.Next());
  return settings;
}

std::string WithConnectionValue(std::string_view text, const ConnectionSetting& setting,
                                std::string_view value) {
  const char first = setting.valueSize == 0 ? '\0' : text[setting.valueAt];
  const bool plain = value.empty() || (value.find(';') == std::string_view::npos && value[0] != '=' &&
                                       ClosingOf(value[0]) == '\0' && WithoutBlanks(value) == value);
  std::string changed(text);
  if (ClosingOf(first) != '\0') {
    Put(changed, setting, Quoted(value, first, ClosingOf(first)));
  } else {
    Put(changed, setting, plain ? std::string(value) : Quoted(value, '"', '"'));
  }
  return changed;
}

bool IsSecretKey(std::string_view key) {
  const std::string upper = UCase(key);
  return upper == "PWD" || upper == "PASS" || upper.find("PASSWORD") != std::string::npos ||
         upper.find("TOKEN") != std::string::npos || upper.find("SECRET") != std::string::npos;
}

bool MayHoldSecret(std::string_view text) {
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (std::string_view(";\"'{}=").find(text[i]) == std::string_view::npos) continue;
    if (text[i] == '=' && IsSecretKey(WithoutBlanks(text.substr(from, i - from)))) return true;
    from = i + 1;
  }
  return false;
}

std::string MaskedConnectionString(std::string_view text) {
  const std::vector<ConnectionSetting> settings = ReadConnectionString(text);
  const bool readable = std::all_of(settings.begin(), settings.end(),
                                    [](const auto& setting) { return setting.fault.empty(); });
  // Where the parts of an unreadable one end is anybody's guess.
  if (!readable) return std::string(MayHoldSecret(text) ? Mask : text);
  std::string masked(text);
  for (auto setting = settings.rbegin(); setting != settings.rend(); ++setting) {
    if (IsSecretKey(setting->key) || MayHoldSecret(setting->value)) Put(masked, *setting, Mask);
  }
  return masked;
}

}  // namespace basic
