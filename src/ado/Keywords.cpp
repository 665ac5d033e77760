// The settings that each driver may be given, spelt as it reads them; whatever could load, write or execute
// is not among them.

#include "ado/Keywords.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "basic/Error.h"
#include "basic/Strings.h"

namespace ado {
namespace {

using Keywords = std::span<const std::string_view>;

/// What may stand in a connection string.
struct Vocabulary {
  std::string_view whose;  // for messages
  Keywords passed;
  /// Of other drivers for the same database; they change nothing here.
  Keywords ignored;
};

constexpr std::string_view SqlitePassed[] = {"Driver",    "Database",   "Timeout",   "NoTXN",   "StepAPI",
                                             "LongNames", "ShortNames", "NoCreat",   "NoWCHAR", "OEMCP",
                                             "JDConv",    "BigInt",     "FKSupport", "PWD"};
constexpr std::string_view SqliteIgnored[] = {"UID",      "Version",      "New",
                                              "Compress", "UTF8Encoding", "FailIfMissing"};

constexpr std::string_view PostgresPassed[] = {"Driver",
                                               "Servername",
                                               "Server",
                                               "Port",
                                               "Database",
                                               "UID",
                                               "PWD",
                                               "SSLmode",
                                               "ReadOnly",
                                               "UseDeclareFetch",
                                               "Fetch",
                                               "BoolsAsChar",
                                               "TextAsLongVarchar",
                                               "UnknownsAsLongVarchar",
                                               "UnknownSizes",
                                               "MaxVarcharSize",
                                               "MaxLongVarcharSize",
                                               "ByteaAsLongVarBinary",
                                               "LowerCaseIdentifier",
                                               "TrueIsMinus1",
                                               "NumericAs",
                                               "ShowSystemTables",
                                               "ShowOidColumn",
                                               "UseServerSidePrepare",
                                               "KeepaliveTime",
                                               "KeepaliveInterval"};
constexpr std::string_view PostgresIgnored[] = {"Protocol", "Timeout", "Pooling", "Encoding"};

constexpr std::string_view MariaPassed[] = {"Driver",    "Server",       "Servername",   "Port",
                                            "Socket",    "Database",     "UID",          "PWD",
                                            "CHARSET",   "CONN_TIMEOUT", "READ_TIMEOUT", "FORCETLS",
                                            "SSLVERIFY", "TLSPEERFP",    "TLSVERSION",   "AUTO_RECONNECT"};
constexpr std::string_view MariaIgnored[] = {"Option", "Pooling", "NO_PROMPT"};

constexpr std::string_view TdsPassed[] = {"Driver",
                                          "Server",
                                          "Port",
                                          "Database",
                                          "UID",
                                          "PWD",
                                          "APP",
                                          "WSID",
                                          "Language",
                                          "TDS_Version",
                                          "ClientCharset",
                                          "TextSize",
                                          "PacketSize",
                                          "Encryption",
                                          "ApplicationIntent",
                                          "MARS_Connection"};
constexpr std::string_view TdsIgnored[] = {"Network",
                                           "TrustServerCertificate",
                                           "MultipleActiveResultSets",
                                           "MarsConn",
                                           "DataTypeCompatibility",
                                           "PersistSecurityInfo",
                                           "Pooling",
                                           "Timeout",
                                           "AutoTranslate",
                                           "AnsiNPW",
                                           "QuotedId",
                                           "Regional",
                                           "MultiSubnetFailover"};

constexpr std::string_view MdbPassed[] = {"Driver", "DBQ"};
constexpr std::string_view MdbIgnored[] = {"UID",
                                           "PWD",
                                           "FIL",
                                           "DriverId",
                                           "MaxBufferSize",
                                           "MaxScanRows",
                                           "PageTimeout",
                                           "ReadOnly",
                                           "Exclusive",
                                           "ExtendedAnsiSQL",
                                           "Threads",
                                           "SafeTransactions",
                                           "SystemDB",
                                           "ImplicitCommitSync",
                                           "UserCommitSync",
                                           "DefaultDir"};

constexpr std::string_view OtherPassed[] = {"Driver",   "Server", "Servername", "Host",
                                            "Hostname", "Port",   "Database",   "DBName",
                                            "DBQ",      "UID",    "PWD",        "Charset"};

/// Neither server nor port: the account of the source is for its own server.
constexpr std::string_view SourcePassed[] = {"DSN", "UID", "PWD", "Database", "APP", "WSID", "Language"};

struct DriverVocabulary {
  const KnownDriver* driver;
  Vocabulary vocabulary;
};

const Vocabulary& vocabularyOf(const KnownDriver* driver) {
  static const DriverVocabulary Known[] = {
      {&SqliteDriver, {SqliteDriver.database, SqlitePassed, SqliteIgnored}},
      {&PostgresDriver, {PostgresDriver.database, PostgresPassed, PostgresIgnored}},
      {&MariaDriver, {MariaDriver.database, MariaPassed, MariaIgnored}},
      {&TdsDriver, {TdsDriver.database, TdsPassed, TdsIgnored}},
      {&MdbDriver, {MdbDriver.database, MdbPassed, MdbIgnored}}};
  static const Vocabulary Other = {"this driver", OtherPassed, {}};
  const auto* const found = std::find_if(std::begin(Known), std::end(Known),
                                         [&](const auto& each) { return each.driver == driver; });
  return found == std::end(Known) ? Other : found->vocabulary;
}

[[noreturn]] void fail(const std::string& description) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection", description);
}

/// The keyword as the driver spells it; empty when it is not among them.
std::string_view find(Keywords keywords, std::string_view key) {
  const auto found = std::find_if(keywords.begin(), keywords.end(), [key](std::string_view each) {
    return basic::EqualsIgnoreCase(each, key);
  });
  return found == keywords.end() ? std::string_view() : *found;
}

[[noreturn]] void failUnknown(std::string_view key, const Vocabulary& vocabulary) {
  constexpr std::size_t Longest = 60;
  std::string known;
  for (const std::string_view each : vocabulary.passed)
    known += (known.empty() ? "" : ", ") + std::string(each);
  fail("The connection string holds '" + std::string(basic::Left(key, Longest)) +
       "', which is not taken with " + std::string(vocabulary.whose) + ". Known are " + known +
       "; whatever else a driver needs stands in a data source (DSN) of this machine.");
}

bool isWord(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
  });
}

void requireHarmless(std::string_view key, const std::string& value) {
  // Converters of characters are libraries, looked for by this name.
  const bool isCharset = key == "ClientCharset" || basic::EqualsIgnoreCase(key, "Charset");
  if (isCharset && !isWord(value)) fail("'" + value + "' is no name of a character set.");
  // SQLite would take options from such a name.
  if (key == "Database" && basic::StartsWith(basic::UCase(value), "FILE:")) {
    fail("The database '" + value + "' must be a path, not an address.");
  }
}

void keep(ConnectionString& string, const Vocabulary& vocabulary) {
  ConnectionString kept;
  for (const auto& [key, value] : string.settings()) {
    if (const auto known = find(vocabulary.passed, key); !known.empty()) {
      requireHarmless(known, value);
      kept.set(known, value);
    } else if (find(vocabulary.ignored, key).empty()) {
      failUnknown(key, vocabulary);
    }
  }
  string = std::move(kept);
}

}  // namespace

void keepKnownSettings(ConnectionString& string, const KnownDriver* driver) {
  keep(string, vocabularyOf(driver));
}

void keepKnownSettingsBesideSource(ConnectionString& string) {
  static const Vocabulary Source = {"a data source (DSN)", SourcePassed, {}};
  keep(string, Source);
}

Braces bracesOf(const KnownDriver* driver) {
  if (driver == &PostgresDriver || driver == &MariaDriver) return Braces::Doubled;
  return driver == &TdsDriver ? Braces::Single : Braces::None;
}

}  // namespace ado
