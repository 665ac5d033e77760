// Drives, shares and other cases of letters lead to a file of this system.

#include "platform/PathRules.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/drives.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// Numbers of the language's own errors.
constexpr std::int32_t FileNotFound = 53;
constexpr std::int32_t PermissionDenied = 70;
constexpr std::int32_t PathNotFound = 76;

[[noreturn]] void fail(std::string description, std::int32_t number = PathNotFound) {
  throw basic::Error(number, "Lumenfold", std::move(description));
}

std::string withSlashes(std::string_view path) { return basic::Replace(path, "\\", "/"); }

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool hasDrive(std::string_view path) { return path.size() >= 2 && isLetter(path[0]) && path[1] == ':'; }
bool hasShare(std::string_view path) { return path.starts_with("\\\\"); }

std::string withoutSlashAtEnd(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

/// Whether the path is the prefix or lies below it.
bool beginsWithFolder(std::string_view path, std::string_view prefix) {
  return basic::EqualsIgnoreCase(path.substr(0, prefix.size()), prefix) &&
         (path.size() == prefix.size() || path[prefix.size()] == '/');
}

/// The entry of a folder with that name, if need be in another case.
fs::path entryOf(const fs::path& folder, const std::string& name) {
  std::error_code ignored;
  if (fs::exists(folder / name, ignored)) return folder / name;
  for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    if (basic::EqualsIgnoreCase(entry->path().filename().string(), name)) return entry->path();
  }
  return folder / name;
}

std::string found(const std::string& folder, std::string_view below) {
  if (below.empty()) return folder;
  std::error_code ignored;
  const fs::path exact = fs::path(folder) / below;
  if (fs::exists(exact, ignored)) return exact.string();
  fs::path path = folder;
  for (const std::string& name : basic::Split(below, '/')) {
    if (!name.empty()) path = entryOf(path, name);
  }
  return path.string();
}

/// What a line of the settings for the path would begin with.
std::string folderOf(std::string_view path) {
  const std::size_t last = path.find_last_of("\\/");
  const bool isRoot = last == std::string_view::npos || last < 3;
  return std::string(isRoot ? path.substr(0, hasDrive(path) ? 2 : path.size()) : path.substr(0, last));
}

}  // namespace

PathRules::Search PathRules::search(std::string_view path) const {
  if (path.empty()) fail("A path is empty.");
  if (path.find('\0') != std::string_view::npos) fail("A path holds a NUL character.");
  if (path.find("://") != std::string_view::npos) {
    fail("'" + std::string(path) + "' is an address, not the path of a file.");
  }
  if (!hasDrive(path) && !hasShare(path)) {
    // Looking is left out where it would not matter: files are asked for once a second.
    std::string plain = withSlashes(path);
    if (path.front() != '/' || plain == path) return {plain, [plain] { return plain; }, /*isNeeded=*/false};
    return {plain, [plain, named = std::string(path)] {
              std::error_code ignored;
              return fs::exists(fs::path(named), ignored) ? named : plain;
            }};
  }

  const std::string slashed = withSlashes(path);
  std::string longest;
  std::string target;
  for (const auto& [key, value] : settings_.entries("Paths")) {
    std::string prefix = withoutSlashAtEnd(withSlashes(key));
    if (prefix.size() >= longest.size() && beginsWithFolder(slashed, prefix)) {
      longest = std::move(prefix);
      target = value;
    }
  }
  if (longest.empty()) {
    fail("This system has no '" + std::string(path) + "'. To say where it is, add a line like '" +
         folderOf(path) + " = /srv/data' to the section [Paths] of " + settings_.file() + ".");
  }
  const std::string below = slashed.substr(std::min(slashed.size(), longest.size() + 1));
  return {target + '/' + below, [target, below] { return found(target, below); }};
}

PathRules::Search PathRules::searchWithin(std::string_view folder, std::string_view name) const {
  const std::string slashed = withSlashes(name);
  const std::string what = "'" + std::string(name) + "'";
  const std::string outside =
      what + " leads out of the folder '" + std::string(folder) + "'; only what lies in it is shown.";
  const auto isOutside = [](const fs::path& path) { return path.is_absolute() || *path.begin() == ".."; };
  if (name.empty() || name.find('\0') != std::string_view::npos) {
    fail(what + " is no name of a file.", FileNotFound);
  }
  if (hasDrive(name) || isOutside(fs::path(slashed).lexically_normal())) {
    fail(outside, PermissionDenied);
  }
  const Search start = search(folder);
  return {start.path + '/' + slashed, [=, folder = std::string(folder), findFolder = start.find] {
            std::error_code missing;
            const fs::path root = fs::canonical(findFolder(), missing);
            if (missing) fail("The folder '" + folder + "' cannot be found: " + missing.message() + ".");
            const fs::path file = fs::canonical(found(root.string(), slashed), missing);
            if (missing) {
              fail(what + " cannot be found in the folder '" + folder + "': " + missing.message() + ".",
                   FileNotFound);
            }
            if (isOutside(file.lexically_relative(root))) fail(outside, PermissionDenied);
            return file.string();
          }};
}

std::string PathRules::translate(std::string_view path) const {
  const Search search = this->search(path);
  if (!search.isNeeded) return search.path;
  return host::OnDrive(search.path, [find = search.find](const auto&) { return find(); });
}

std::optional<std::string> PathRules::translateLocal(std::string_view path) const {
  const host::Drives* const drives = host::Current().drives;
  const auto isLocal = [drives](const std::string& file) {
    return drives == nullptr || drives->IsLocal(file);
  };
  const Search search = this->search(path);
  if (!isLocal(search.path)) return std::nullopt;
  std::string file = search.isNeeded ? search.find() : search.path;
  // In another case of letters it may be a link.
  if (!isLocal(file)) return std::nullopt;
  return file;
}

}  // namespace platform
