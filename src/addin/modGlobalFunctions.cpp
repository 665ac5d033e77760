#include "addin/modGlobalFunctions.h"

#include <algorithm>
#include <vector>

#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000::modGlobalFunctions {

void Reset() {
  CurrentDisplayType = 0;
  OfflineGenerationActive = false;
  OfflineGenerationBase.clear();
  SavedBeforeShow = 0;
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

std::string ReplaceFolder(std::string_view text) {
  return basic::Replace(text, "[LUMENFOLDFOLDER]", host::Current().module->Path());
}

bool IsAddress(std::string_view path) {
  const std::string upper = basic::UCase(path.substr(0, 8));
  return basic::StartsWith(upper, "HTTP://") || basic::StartsWith(upper, "HTTPS://") ||
         basic::StartsWith(upper, "FTP://") || basic::StartsWith(upper, "FILE://");
}

bool IsAbsolute(std::string_view path) {
  return basic::StartsWith(path, "\\\\") || path.substr(1, 2) == ":\\" || basic::StartsWith(path, "/");
}

}  // namespace

std::string ResolvePath(std::string_view path, std::string_view base) {
  if (path.empty()) return {};
  std::string resolved = ReplaceFolder(path);
  if (IsAddress(resolved) || IsAbsolute(resolved)) return resolved;

  const std::size_t end = base.find_last_of("/\\");
  if (end == std::string_view::npos) return resolved;
  // The base tells which system's paths these are.
  const char separator = base[end];
  if (separator == '/') std::replace(resolved.begin(), resolved.end(), '\\', '/');
  return std::string(base.substr(0, end + 1)) + resolved;
}

std::string ResolveConnectionString(std::string_view text, std::string_view base) {
  const std::string replaced = ReplaceFolder(text);
  if (!basic::StartsWith(basic::UCase(replaced), "PROVIDER=MICROSOFT.JET.OLEDB")) return replaced;

  constexpr std::string_view key = "DATA SOURCE=";
  std::string resolved;
  for (const std::string& part : basic::Split(replaced, ';')) {
    if (!resolved.empty()) resolved += ';';
    if (basic::StartsWith(basic::UCase(part), key)) {
      resolved += part.substr(0, key.size()) + ResolvePath(part.substr(key.size()), base);
    } else {
      resolved += part;
    }
  }
  return resolved;
}

}  // namespace LF2000::modGlobalFunctions
