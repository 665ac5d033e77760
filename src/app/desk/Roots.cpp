// What may be looked at of the machine's folders, and nothing else of it.

#include "app/desk/Roots.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <tuple>
#include <utility>

#include "basic/Error.h"
#include "basic/Names.h"
#include "basic/Strings.h"
#include "host/drives.h"
#include "host/services.h"
#include "web/desk/Desk.h"

namespace app {

using json::Json;

namespace fs = std::filesystem;

namespace {

[[noreturn]] void failUnknown() {
  throw web::Refusal(404, "There is nothing of that name in the folders of this desk.");
}

bool isWithin(const fs::path& path, const fs::path& folder) {
  const auto [end, rest] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return end == folder.end();
}

struct Entry {
  std::string name;
  bool isFolder = false;
  std::uintmax_t size = 0;
  std::time_t changed = 0;
};

bool isWanted(const std::string& name, const std::vector<std::string>& kinds) {
  if (kinds.empty()) return true;
  std::string ending = fs::path(name).extension().string();
  if (!ending.empty()) ending.erase(0, 1);
  return basic::HasName(kinds, ending);
}

std::string minuteOf(std::time_t time) {
  std::tm local{};
  ::localtime_r(&time, &local);
  constexpr std::size_t longest = 32;
  std::string text(longest, '\0');
  text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local));
  return text;
}

/// What the entry is, links followed; nothing for what is not to be shown.
std::optional<Entry> lookAt(const fs::directory_entry& found, const fs::path& root) {
  std::error_code failed;
  Entry entry;
  entry.name = found.path().filename().string();
  // Office programs mark with "~$" what they have open.
  if (entry.name.starts_with('.') || entry.name.starts_with("~$")) return std::nullopt;
  if (found.is_symlink(failed)) {
    const fs::path target = fs::canonical(found.path(), failed);
    if (failed || !isWithin(target, root)) return std::nullopt;
  }
  entry.isFolder = found.is_directory(failed);
  if (entry.isFolder) return entry;
  if (!found.is_regular_file(failed)) return std::nullopt;
  entry.size = found.file_size(failed);
  const auto written = found.last_write_time(failed);
  if (failed) return std::nullopt;
  entry.changed = std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(written));
  return entry;
}

}  // namespace

Roots::Roots(const std::vector<Root>& folders) {
  for (const Root& folder : folders) {
    std::error_code missing;
    const fs::path path = fs::canonical(folder.path, missing);
    if (missing || !fs::is_directory(path, missing)) continue;
    const bool isKnown = std::any_of(roots_.begin(), roots_.end(),
                                     [&](const Root& root) { return isWithin(path, root.path); });
    if (!isKnown) roots_.push_back({folder.name, path.string()});
  }
}

Json Roots::toJson() const {
  Json json = Json::array();
  for (const Root& root : roots_) {
    json.push_back({{"id", json.size() + 1}, {"name", root.name}, {"path", root.path}});
  }
  return json;
}

const Roots::Root& Roots::root(int number) const {
  if (number < 1 || static_cast<std::size_t>(number) > roots_.size()) failUnknown();
  return roots_[static_cast<std::size_t>(number) - 1];
}

std::string Roots::chosen(int number, std::string_view path) const {
  const Root& root = this->root(number);
  if (path.empty()) return root.path;
  // What begins with a point is not listed, and ".." is among it.
  for (const std::string& name : basic::Split(path, '/')) {
    if (name.empty() || name.starts_with('.')) failUnknown();
  }
  try {
    return host::Current().files->FileWithin(root.path, path);
  } catch (const basic::Error&) {
    failUnknown();
  }
}

Json Roots::list(const Wish& wish) const {
  constexpr std::size_t most = 1000;
  const fs::path root = this->root(wish.root).path;
  const std::string folder = chosen(wish.root, wish.path);
  auto entries = host::OnDrive(folder, [folder, root](const auto&) {
    std::vector<Entry> found;
    std::error_code failed;
    for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed)) {
      if (auto entry = lookAt(*at, root)) found.push_back(std::move(*entry));
    }
    if (failed && found.empty()) failUnknown();
    return found;
  });
  std::erase_if(entries, [&](const Entry& entry) {
    return !entry.isFolder && (wish.isFoldersOnly || !isWanted(entry.name, wish.kinds));
  });
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
    return std::tuple(!a.isFolder, basic::UCase(a.name), a.name) <
           std::tuple(!b.isFolder, basic::UCase(b.name), b.name);
  });
  Json list = Json::array();
  for (const Entry& entry : entries) {
    if (list.size() == most) break;
    if (entry.isFolder) {
      list.push_back({{"name", entry.name}, {"isFolder", true}});
    } else {
      list.push_back({{"name", entry.name}, {"size", entry.size}, {"changed", minuteOf(entry.changed)}});
    }
  }
  return {{"path", wish.path}, {"entries", std::move(list)}, {"isCut", entries.size() > most}};
}

namespace {

/// Links followed, where that keeps nobody waiting: a drive of another machine may.
fs::path realPath(const std::string& path) {
  const host::Drives* drives = host::Current().drives;
  std::error_code failed;
  const bool isLocal = drives == nullptr || drives->IsLocal(path);
  fs::path real = isLocal ? fs::weakly_canonical(path, failed) : fs::path(path).lexically_normal();
  return failed ? fs::path() : real;
}

}  // namespace

bool Roots::hold(const std::string& path) const {
  const fs::path real = realPath(path);
  return std::any_of(roots_.begin(), roots_.end(),
                     [&](const Root& root) { return isWithin(real, root.path); });
}

bool Roots::isIn(const std::string& path, const std::string& folder) {
  const fs::path real = realPath(folder);
  return !real.empty() && isWithin(realPath(path), real);
}

}  // namespace app
