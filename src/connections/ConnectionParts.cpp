// Connection strings are taken apart for a form and put together by it.

#include "connections/ConnectionParts.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "basic/ConnectionString.h"
#include "basic/Strings.h"

namespace LF2000 {

namespace {

using basic::ConnectionSetting;
using Keys = std::span<const std::string_view>;

// The first of each is written; all are read.
constexpr std::array<std::string_view, 6> ServerKeys = {"Server",  "Data Source", "Host",
                                                        "Address", "Addr",        "Servername"};
constexpr std::array<std::string_view, 1> PortKeys = {"Port"};
constexpr std::array<std::string_view, 2> DatabaseKeys = {"Database", "Initial Catalog"};
constexpr std::array<std::string_view, 4> FileKeys = {"Data Source", "Database", "DBQ", "DataSource"};
constexpr std::array<std::string_view, 4> UserKeys = {"User ID", "UID", "User", "Username"};
constexpr std::array<std::string_view, 1> ProviderKeys = {"Provider"};
constexpr std::array<std::string_view, 1> SourceKeys = {"DSN"};

Keys KeysOf(ConnectionPart part, bool isFile) {
  switch (part) {
    case ConnectionPart::Server:
      return ServerKeys;
    case ConnectionPart::Port:
      return PortKeys;
    case ConnectionPart::Database:
      return isFile ? Keys(FileKeys) : Keys(DatabaseKeys);
    case ConnectionPart::User:
      return UserKeys;
  }
  return {};
}

const ConnectionSetting* Find(const std::vector<ConnectionSetting>& settings, Keys keys) {
  for (const std::string_view key : keys) {
    // The last of one name wins.
    const auto found = std::find_if(settings.rbegin(), settings.rend(), [key](const auto& setting) {
      return setting.fault.empty() && basic::EqualsIgnoreCase(setting.key, key);
    });
    if (found != settings.rend()) return &*found;
  }
  return nullptr;
}

std::string ValueOf(const std::vector<ConnectionSetting>& settings, Keys keys) {
  const ConnectionSetting* setting = Find(settings, keys);
  return setting == nullptr ? std::string() : setting->value;
}

std::string InBraces(std::string_view value) { return "{" + basic::Replace(value, "}", "}}") + "}"; }

bool IsSqlServer(std::string_view provider) {
  const std::string upper = basic::UCase(provider);
  return basic::StartsWith(upper, "SQLOLEDB") || basic::StartsWith(upper, "SQLNCLI") ||
         basic::StartsWith(upper, "MSOLEDBSQL");
}

void Append(std::string& text, std::string_view key, std::string_view value) {
  if (value.empty()) return;
  if (!text.empty() && text.back() != ';') text += ';';
  text += std::string(key) + "=" + InBraces(value);
}

/// Without the setting and the semicolon that goes with it.
std::string Without(std::string text, const ConnectionSetting& setting) {
  const std::size_t before = text.rfind(';', setting.valueAt);
  std::size_t begin = before == std::string::npos ? 0 : before;
  std::size_t end = setting.valueAt + setting.valueSize;
  if (begin == 0 && end < text.size()) ++end;
  text.erase(begin, end - begin);
  return text;
}

}  // namespace

ConnectionParts ReadParts(std::string_view text) {
  const std::vector<ConnectionSetting> settings = basic::ReadConnectionString(text);
  ConnectionParts parts;
  parts.Provider = ValueOf(settings, ProviderKeys);
  parts.DataSource = ValueOf(settings, SourceKeys);
  parts.Server = ValueOf(settings, ServerKeys);
  parts.Port = ValueOf(settings, PortKeys);
  parts.Database = ValueOf(settings, DatabaseKeys);
  parts.User = ValueOf(settings, UserKeys);
  // Of a file there is no server.
  if (parts.Database.empty()) {
    const std::string upper = basic::UCase(parts.Provider);
    const bool isFile = basic::StartsWith(upper, "SQLITE") || basic::StartsWith(upper, "MICROSOFT.");
    if (isFile) {
      parts.Database = ValueOf(settings, FileKeys);
      parts.Server.clear();
    }
  }
  // "host,port" is what providers for this server know.
  const std::size_t comma = parts.Server.find(',');
  if (IsSqlServer(parts.Provider) && comma != std::string::npos) {
    parts.Port = parts.Server.substr(comma + 1);
    parts.Server.resize(comma);
  }
  return parts;
}

std::string BuildConnectionString(const ConnectionParts& parts, bool isFile) {
  std::string text;
  if (!parts.DataSource.empty()) {
    Append(text, "DSN", parts.DataSource);
    Append(text, "Database", parts.Database);
    Append(text, "UID", parts.User);
    return text;
  }
  text = "Provider=" + parts.Provider;
  if (isFile) {
    Append(text, "Data Source", parts.Database);
  } else if (IsSqlServer(parts.Provider)) {
    Append(text, "Data Source", parts.Port.empty() ? parts.Server : parts.Server + "," + parts.Port);
    Append(text, "Initial Catalog", parts.Database);
  } else {
    Append(text, "Server", parts.Server);
    Append(text, "Port", parts.Port);
    Append(text, "Database", parts.Database);
  }
  Append(text, "User ID", parts.User);
  return text;
}

std::string WithPart(std::string_view text, ConnectionPart part, std::string_view value, bool isFile) {
  const std::vector<ConnectionSetting> settings = basic::ReadConnectionString(text);
  const ConnectionParts parts = ReadParts(text);
  std::string changed(text);
  std::string written(value);
  const bool isSqlServer = IsSqlServer(parts.Provider);
  if (isSqlServer && (part == ConnectionPart::Server || part == ConnectionPart::Port)) {
    const std::string server = part == ConnectionPart::Server ? written : parts.Server;
    const std::string port = part == ConnectionPart::Port ? written : parts.Port;
    const bool hasPortSetting = Find(settings, PortKeys) != nullptr;
    if (part == ConnectionPart::Server || !hasPortSetting) {
      part = ConnectionPart::Server;
      written = port.empty() || hasPortSetting ? server : server + "," + port;
    }
  }
  const Keys keys = KeysOf(part, isFile);
  const ConnectionSetting* const setting = Find(settings, keys);
  if (setting == nullptr) {
    std::string_view key = keys.front();
    if (isSqlServer && part == ConnectionPart::Server) key = "Data Source";
    if (isSqlServer && part == ConnectionPart::Database) key = "Initial Catalog";
    if (!parts.DataSource.empty() && part == ConnectionPart::User) key = "UID";
    Append(changed, key, written);
  } else if (written.empty()) {
    changed = Without(std::move(changed), *setting);
  } else {
    changed.replace(setting->valueAt, setting->valueSize, InBraces(written));
  }
  return changed;
}

}  // namespace LF2000
