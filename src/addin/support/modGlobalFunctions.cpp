// Where the paths and connection strings of a deck lead, the one Excel, and small helpers of all parts.

#include "addin/support/modGlobalFunctions.h"

#include <algorithm>
#include <vector>

#include "addin/support/modDebug.h"
#include "basic/ConnectionString.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Names.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000::modGlobalFunctions {

void Reset() {
  CurrentDisplayType = 0;
  OfflineGenerationActive = false;
  OfflineGenerationBase.clear();
  SavedBeforeShow = 0;
  CurrentExcelState = ExcelState::Unknown;
  SystemExcel.reset();
  HostApplication.reset();
}

namespace {

void LogExcel(std::string_view text) {
  modDebug::WriteDebugLog(modDebug::DebugKind::Information, "modGlobalFunctions", text);
}

std::shared_ptr<Excel::Application> CreateExcel() {
  std::shared_ptr<Excel::Application> excel;
  IgnoreErrors([&] {
    if (host::Current().excel) excel = host::Current().excel->CreateApplication();
  });
  return excel;
}

void ShutDownExcel() {
  LogExcel("shutdown");
  IgnoreErrors([] {
    if (!SystemExcel) return;
    SystemExcel->IgnoreRemoteRequests(false);
    if (!SystemExcel->Visible()) SystemExcel->Quit();
  });
  SystemExcel.reset();
  HostApplication.reset();
  CurrentExcelState = ExcelState::Unknown;
}

}  // namespace

ExcelState ExcelStatus(bool start, bool shutdown) {
  LogExcel("ExcelStatus:" + basic::CStr(start) + basic::CStr(shutdown));
  if (shutdown) {
    ShutDownExcel();
    return CurrentExcelState;
  }
  if (CurrentExcelState == ExcelState::Unknown) {
    LogExcel("unknown");
    const bool there = CreateExcel() != nullptr;
    LogExcel(there ? "excelnotrunning" : "excelunavailable");
    CurrentExcelState = there ? ExcelState::NotRunning : ExcelState::Unavailable;
  }
  if (CurrentExcelState == ExcelState::NotRunning && start) {
    LogExcel("starting excel");
    SystemExcel = CreateExcel();
    if (SystemExcel) {
      LogExcel("excel started");
      SystemExcel->IgnoreRemoteRequests(true);
      CurrentExcelState = ExcelState::Started;
    }
  }
  return CurrentExcelState;
}

std::string InfoSetting(std::string_view key) {
  return host::Current().settings->GetSetting(ProductTitle, "Info", key);
}

void OpenUrl(std::string_view url, std::int32_t showCommand) {
  std::string address(url);
  if (basic::UCase(url.substr(0, 7)) != "HTTP://") address.insert(0, "http://");
  IgnoreErrors([&] { host::Current().shell->ShellExecute("open", address, showCommand); });
}

std::string MakeTempFileName(std::string& prefix) {
  if (prefix.empty()) prefix = "TMP";
  std::string name;
  IgnoreErrors([&] {
    host::Files& files = *host::Current().files;
    name = files.TempFileName(files.TempPath(), prefix);
  });
  return name;
}

std::string LocalComputerName() { return host::Current().shell->ComputerName().value_or(""); }

std::string PreviewValue(std::string_view formatOrText, std::int32_t kind) {
  switch (kind) {
    case 1:
      return basic::Format(host::Current().clock->Now(), formatOrText);
    case 3:
      return std::string(formatOrText);
    case 2:
    case 4:
    case 5:
    case 6:
      return "[n/a]";
    default:
      return {};
  }
}

std::string Format000(std::int32_t number) {
  std::string digits = std::to_string(number);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  return digits;
}

std::string FileInFolder(std::string_view folder, std::string_view file) {
  const char separator = folder.find('/') == std::string_view::npos ? '\\' : '/';
  std::string path(folder);
  path += separator;
  path += file;
  return path;
}

namespace {

std::string FolderOf(std::string_view base) {
  const std::size_t end = base.find_last_of("/\\");
  return end == std::string_view::npos ? "." : std::string(base.substr(0, end));
}

std::string ReplaceFolder(std::string_view text, std::string_view base) {
  constexpr std::string_view Placeholder = "[LUMENFOLDFOLDER]";
  if (text.find(Placeholder) == std::string_view::npos) return std::string(text);
  const std::string setting = InfoSetting("LumenfoldFolder");
  return basic::Replace(text, Placeholder, setting.empty() ? FolderOf(base) : setting);
}

bool IsAddress(std::string_view path) {
  const std::string upper = basic::UCase(path.substr(0, 8));
  return basic::StartsWith(upper, "HTTP://") || basic::StartsWith(upper, "HTTPS://") ||
         basic::StartsWith(upper, "FTP://") || basic::StartsWith(upper, "FILE://");
}

bool IsAbsolute(std::string_view path) {
  if (path.empty()) return false;
  const std::string_view afterDrive = path.substr(1, 2);
  return afterDrive == ":\\" || afterDrive == ":/" || basic::StartsWith(path, "\\\\") ||
         basic::StartsWith(path, "/");
}

}  // namespace

std::string ResolvePath(std::string_view path, std::string_view base) {
  if (path.empty()) return {};
  std::string resolved = ReplaceFolder(path, base);
  if (IsAddress(resolved) || IsAbsolute(resolved)) return resolved;

  const std::size_t end = base.find_last_of("/\\");
  if (end == std::string_view::npos) return resolved;
  // The base tells which system's paths these are.
  const char separator = base[end];
  if (separator == '/') std::replace(resolved.begin(), resolved.end(), '\\', '/');
  return std::string(base.substr(0, end + 1)) + resolved;
}

std::string ShortenPath(std::string_view path, std::string_view base) {
  const std::size_t end = base.find_last_of("/\\");
  if (end == std::string_view::npos) return std::string(path);
  const std::string_view folder = base.substr(0, end + 1);
  const bool isWithin = path.size() > folder.size() && basic::StartsWith(path, folder);
  return std::string(isWithin ? path.substr(folder.size()) : path);
}

namespace {

bool NamesFileProvider(std::string_view connectionString) {
  const std::string upper = basic::UCase(connectionString);
  return basic::StartsWith(upper, "PROVIDER=MICROSOFT.JET.OLEDB") ||
         basic::StartsWith(upper, "PROVIDER=MICROSOFT.ACE.OLEDB") ||
         basic::StartsWith(upper, "PROVIDER=SQLITE");
}

/// Whether the settings name an ODBC driver whose databases are files.
bool NamesFileDriver(const std::vector<basic::ConnectionSetting>& settings) {
  return std::any_of(settings.begin(), settings.end(), [](const basic::ConnectionSetting& setting) {
    if (!basic::EqualsIgnoreCase(setting.key, "DRIVER")) return false;
    const std::string name = basic::UCase(setting.value);
    return name.find("SQLITE") != std::string::npos || name.find("MDB") != std::string::npos ||
           name.find("MICROSOFT ACCESS") != std::string::npos;
  });
}

}  // namespace

namespace {

/// Calls `change(value, whether it is the path of a database)` for the settings that may hold a path.
template <typename Change>
std::string WithChangedSettings(std::string_view text, const Change& change) {
  std::string changed(text);
  const std::vector<basic::ConnectionSetting> settings = basic::ReadConnectionString(text);
  const bool byProvider = NamesFileProvider(text);
  const bool byDriver = NamesFileDriver(settings);
  // From the last one, so that those before it stay where they are.
  for (auto setting = settings.rbegin(); setting != settings.rend(); ++setting) {
    if (!setting->fault.empty()) continue;
    const bool isFile = (byProvider && basic::EqualsIgnoreCase(setting->key, "DATA SOURCE")) ||
                        (byDriver && basic::HasName({"DATABASE", "DBQ"}, setting->key));
    const bool isNested = basic::EqualsIgnoreCase(setting->key, "EXTENDED PROPERTIES");
    const std::string value = isNested ? WithChangedSettings(setting->value, change)
                                       : change(setting->value, isFile && setting->value != ":memory:");
    if (value != setting->value) changed = basic::WithConnectionValue(changed, *setting, value);
  }
  return changed;
}

}  // namespace

std::string ResolveConnectionString(std::string_view text, std::string_view base) {
  return WithChangedSettings(text, [&](const std::string& value, bool isFile) {
    const std::string placed = ReplaceFolder(value, base);
    return isFile ? ResolvePath(placed, base) : placed;
  });
}

std::string WithDatabaseFiles(std::string_view text,
                              const std::function<std::string(const std::string&)>& path) {
  return WithChangedSettings(
      text, [&](const std::string& value, bool isFile) { return isFile ? path(value) : value; });
}

}  // namespace LF2000::modGlobalFunctions
