// Passwords of connection strings are kept apart from what forms show.

#include "connections/StoredPassword.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "basic/ConnectionString.h"
#include "basic/Strings.h"

namespace LF2000 {

namespace {

using basic::ConnectionSetting;

/// By key in capitals; those that change nothing of where the password goes are left out.
using Settings = std::multimap<std::string, std::string>;

constexpr std::array<std::string_view, 9> Harmless = {"CONNECT TIMEOUT",
                                                      "CONNECTION TIMEOUT",
                                                      "COMMAND TIMEOUT",
                                                      "GENERAL TIMEOUT",
                                                      "APP",
                                                      "APPLICATION NAME",
                                                      "WSID",
                                                      "LANGUAGE",
                                                      "READONLY"};

Settings SettingsOf(std::string_view text) {
  Settings all;
  for (const ConnectionSetting& setting : basic::ReadConnectionString(text)) {
    std::string key = basic::UCase(setting.key);
    if (std::find(Harmless.begin(), Harmless.end(), key) != Harmless.end()) continue;
    all.emplace(std::move(key), setting.fault + setting.value);
  }
  return all;
}

}  // namespace

StoredPassword::StoredPassword(std::string connectionString) : stored_(std::move(connectionString)) {
  const std::vector<ConnectionSetting> settings = basic::ReadConnectionString(stored_);
  isWithheld_ = std::any_of(settings.begin(), settings.end(), [this](const ConnectionSetting& setting) {
    if (!setting.fault.empty()) return basic::MayHoldSecret(stored_);
    return !basic::IsSecretKey(setting.key) && basic::MayHoldSecret(setting.value);
  });
  if (isWithheld_) {
    secrets_ = stored_;
    return;
  }
  std::size_t from = 0;
  for (const ConnectionSetting& setting : settings) {
    const std::size_t end = setting.valueAt + setting.valueSize;
    if (!setting.fault.empty() || !basic::IsSecretKey(setting.key)) continue;
    const std::size_t separator = stored_.rfind(';', setting.valueAt);
    const std::size_t begin = std::max(from, separator == std::string::npos ? 0 : separator + 1);
    shown_ += stored_.substr(from, begin - from);
    secrets_ += (secrets_.empty() ? "" : ";") + stored_.substr(begin, end - begin);
    from = std::min(end + 1, stored_.size());
  }
  shown_ += stored_.substr(from);
  if (IsSet() && from == stored_.size() && shown_.ends_with(';')) shown_.pop_back();
}

bool StoredPassword::Fits(std::string_view shown) const {
  return isWithheld_ ? shown.empty() : SettingsOf(shown) == SettingsOf(shown_);
}

std::string StoredPassword::Join(std::string_view shown) const {
  if (shown == shown_) return stored_;
  const bool isEnded = shown.empty() || shown.back() == ';' || secrets_.empty();
  return std::string(shown) + (isEnded ? "" : ";") + secrets_;
}

bool HoldsPassword(std::string_view connectionString) {
  return StoredPassword(std::string(connectionString)).IsSet();
}

std::string WithPassword(std::string_view shown, std::string_view password) {
  std::string text(shown);
  if (password.empty()) return text;
  if (!text.empty() && text.back() != ';') text += ';';
  return text + "Password={" + basic::Replace(password, "}", "}}") + "}";
}

}  // namespace LF2000
