#include "ado/FileSource.h"

#include <filesystem>
#include <fstream>

#include "basic/Error.h"
#include "basic/IniLine.h"
#include "basic/Strings.h"
#include "host/drives.h"

namespace ado {
namespace {

constexpr std::string_view CommonFolder = "/etc/ODBCDataSources";
constexpr std::uintmax_t LongestFile = std::uintmax_t{64} * 1024;

[[noreturn]] void fail(const std::filesystem::path& file, std::string_view why) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     "The file data source " + file.string() + " cannot be read: " + std::string(why) + ".");
}

std::string_view withoutBraces(std::string_view value) {
  const bool isBraced = value.size() >= 2 && value.front() == '{' && value.back() == '}';
  return isBraced ? value.substr(1, value.size() - 2) : value;
}

ConnectionString settingsIn(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) fail(path, "there is no such file");
  if (std::filesystem::file_size(path, error) > LongestFile || error) fail(path, "it is too long");
  std::ifstream file(path);
  if (!file) fail(path, "the file cannot be opened");

  ConnectionString settings;
  bool isOurs = false;
  bool found = false;
  for (std::string line; std::getline(file, line);) {
    const basic::IniLine said = basic::ReadIniLine(line);
    if (said.kind == basic::IniLine::Kind::Section) {
      isOurs = basic::EqualsIgnoreCase(said.name, "ODBC");
      found = found || isOurs;
    } else if (said.kind == basic::IniLine::Kind::Entry && isOurs) {
      settings.set(said.name, withoutBraces(said.value));
    }
  }
  if (!found) fail(path, "it has no section [ODBC]");
  return settings;
}

}  // namespace

ConnectionString readFileSource(std::string_view name) {
  std::filesystem::path path = std::filesystem::path(CommonFolder) / name;
  if (!path.has_extension()) path += ".dsn";
  return host::OnDrive(path.string(), [path](const auto&) { return settingsIn(path); });
}

}  // namespace ado
