// Which drive a path lies on is told by the kernel's table and by the links on the way, which are read one by
// one.

#include "platform/MountTable.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <climits>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

namespace platform {
namespace {

constexpr const char* MountInfo = "/proc/self/mountinfo";

bool isNetworkType(std::string_view type) {
  constexpr std::array<std::string_view, 22> Types{
      "9p",   "afs",    "autofs", "beegfs", "ceph", "cifs",  "coda",  "fuse", "gfs2",  "glusterfs", "gpfs",
      "kafs", "lustre", "ncpfs",  "nfs",    "nfs4", "ocfs2", "pvfs2", "smb3", "smbfs", "virtiofs",  "davfs"};
  return std::ranges::find(Types, type) != Types.end() || type.starts_with("fuse.");
}

/// Blanks and the like are written as "\040".
std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '\\' && i + 3 < text.size();
    if (!isEscape) {
      plain += text[i];
      continue;
    }
    plain += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
    i += 3;
  }
  return plain;
}

bool liesIn(std::string_view path, std::string_view folder) {
  if (folder == "/") return true;
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::optional<std::string> linkTarget(const std::string& path) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = ::readlink(path.c_str(), target.data(), target.size());
  if (size < 0) return std::nullopt;
  return std::string(target.data(), static_cast<std::size_t>(size));
}

}  // namespace

MountTable::MountTable() : changes_(::open(MountInfo, O_RDONLY | O_CLOEXEC)) {
  std::ifstream file(MountInfo);
  read(file);
}

MountTable::~MountTable() {
  if (changes_ >= 0) ::close(changes_);
}

void MountTable::read(std::istream& mountinfo) {
  entries_.clear();
  for (std::string line; std::getline(mountinfo, line);) {
    // id parent device root point options [tags] - type source options
    std::istringstream fields(line);
    Entry entry{};
    std::string skipped;
    std::string point;
    std::string type;
    fields >> entry.mount.id >> skipped >> skipped >> skipped >> point;
    while (fields >> skipped && skipped != "-") {
    }
    if (!(fields >> type)) continue;
    entry.mount.point = unescaped(point);
    entry.isNetwork = isNetworkType(type);
    entries_.push_back(std::move(entry));
  }
  hasNetwork_ = std::ranges::any_of(entries_, &Entry::isNetwork);
}

void MountTable::readIfChanged() {
  pollfd changed{changes_, POLLPRI, 0};
  if (changes_ < 0 || ::poll(&changed, 1, 0) <= 0) return;
  std::ifstream file(MountInfo);
  read(file);
}

/// Of mounts on one point the last one is seen.
const NetworkMount* MountTable::at(const std::string& path) const {
  const Entry* found = nullptr;
  for (const Entry& entry : entries_) {
    if (!liesIn(path, entry.mount.point)) continue;
    if (found == nullptr || entry.mount.point.size() >= found->mount.point.size()) found = &entry;
  }
  return found != nullptr && found->isNetwork ? &found->mount : nullptr;
}

std::optional<NetworkMount> MountTable::networkMountOf(const std::string& path) {
  readIfChanged();
  if (!hasNetwork_) return std::nullopt;
  namespace fs = std::filesystem;
  std::error_code noFolder;
  fs::path rest = fs::path(path).is_absolute() ? fs::path(path) : fs::current_path(noFolder) / path;
  fs::path walked = "/";
  if (const NetworkMount* root = at("/")) return *root;
  constexpr int MostLinks = 40;  // as the kernel
  for (int links = 0; !rest.empty();) {
    const fs::path name = *rest.begin();
    fs::path behind;
    for (auto each = std::next(rest.begin()); each != rest.end(); ++each) behind /= *each;
    rest = std::move(behind);
    if (name == "/" || name == "." || name.empty()) continue;
    walked = name == ".." ? walked.parent_path() : walked / name;
    // Before it is touched: looking at a mount point asks what is mounted there.
    if (const NetworkMount* mount = at(walked.string())) return *mount;
    const auto target = linkTarget(walked.string());
    if (!target) continue;
    if (++links > MostLinks) return std::nullopt;
    rest = fs::path(*target) / rest;
    walked = target->starts_with('/') ? fs::path("/") : walked.parent_path();
  }
  return std::nullopt;
}

}  // namespace platform
