// Keeps the files of decks by their digests, and lays them out as folders.

#include "app/player/DeckCache.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <numeric>
#include <optional>
#include <system_error>

#include "app/distribution/Digest.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"

namespace app {
namespace {

namespace fs = std::filesystem;

void makeFolder(const fs::path& folder) {
  std::error_code failed;
  if (fs::create_directories(folder, failed)) fs::permissions(folder, fs::perms::owner_all, failed);
  if (failed) {
    fail("The folder " + basic::InQuotes(folder.string()) + " cannot be made: " + failed.message() + ".");
  }
}

/// The digest of a file of that size; nothing of any other.
std::optional<std::string> digestOf(const fs::path& path, std::uint64_t size) {
  const process::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  if (static_cast<std::uint64_t>(status.st_size) != size) return std::nullopt;
  Digest digest;
  std::string piece(std::size_t{1} << 20U, '\0');
  for (ssize_t count; (count = ::read(file.get(), piece.data(), piece.size())) != 0;) {
    if (count < 0 && errno != EINTR) return std::nullopt;
    if (count > 0) digest.add(std::string_view(piece).substr(0, static_cast<std::size_t>(count)));
  }
  return digest.finish();
}

/// What has come of a file.
class Coming {
 public:
  Coming(const fs::path& path, std::uint64_t size)
      : file_(::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600)),
        size_(size) {
    struct stat status {};
    if (!file_.isOpen() || ::fstat(file_.get(), &status) != 0) failToKeep();
    come_ = static_cast<std::uint64_t>(status.st_size);
    if (come_ <= size_) return;
    if (::ftruncate(file_.get(), 0) != 0) failToKeep();
    come_ = 0;
  }

  [[nodiscard]] std::uint64_t come() const { return come_; }
  void take(std::string_view bytes) {
    if (bytes.size() > size_ - come_) fail("more came than its note says");
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) failToKeep();
      come_ += static_cast<std::uint64_t>(written);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void finish() {
    if (::fsync(file_.get()) != 0) failToKeep();
  }

 private:
  [[noreturn]] static void failToKeep() { fail(std::string("it cannot be kept: ") + std::strerror(errno)); }

  process::Descriptor file_;
  std::uint64_t size_;
  std::uint64_t come_ = 0;
};

template <typename Keep>
void removeOthers(const fs::path& folder, const Keep& isKept) {
  std::error_code stopped;
  for (fs::directory_iterator entry(folder, stopped), end; !stopped && entry != end;
       entry.increment(stopped)) {
    std::error_code ignored;
    if (!isKept(entry->path().filename().string())) fs::remove_all(entry->path(), ignored);
  }
}

}  // namespace

DeckCache::DeckCache(fs::path folder) : folder_(std::move(folder)) {
  makeFolder(folder_);
  // A cache throws away what it does not know.
  std::error_code failed;
  if (!fs::exists(folder_ / "lock", failed) && !fs::is_empty(folder_, failed)) {
    fail("The folder " + basic::InQuotes(folder_.string()) + " holds other files, so it can be no cache.");
  }
  for (const char* each : {"content", "partial", "decks"}) makeFolder(folder_ / each);
  lock_.reset(::open((folder_ / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock_.isOpen() || ::flock(lock_.get(), LOCK_EX | LOCK_NB) != 0) {
    fail("The cache " + basic::InQuotes(folder_.string()) + " is in use by another player.");
  }
}

bool DeckCache::has(const SentFile& file) {
  if (const auto found = whole_.find(file.sha256); found != whole_.end()) return found->second == file.size;
  const auto digest = digestOf(content(file.sha256), file.size);
  if (digest != file.sha256) return false;
  whole_.emplace(file.sha256, file.size);
  return true;
}

void DeckCache::put(const SentFile& file, const Fetch& fetch) {
  if (has(file)) return;
  const fs::path coming = partial(file.sha256);
  {
    Coming part(coming, file.size);
    if (part.come() < file.size || file.size == 0) {
      fetch(part.come(), [&part](std::string_view bytes) { part.take(bytes); });
    }
    if (part.come() < file.size) fail("Not all of " + basic::InQuotes(file.path) + " came.");
    part.finish();
  }
  std::error_code failed;
  if (digestOf(coming, file.size) != file.sha256) {
    fs::remove(coming, failed);
    fail(basic::InQuotes(file.path) + " is not what its note says.");
  }
  fs::permissions(coming, fs::perms::owner_read, failed);
  fs::rename(coming, content(file.sha256), failed);
  if (failed) fail("It cannot be kept: " + failed.message() + ".");
  whole_.emplace(file.sha256, file.size);
}

void DeckCache::layOut(const std::string& version, const Note& note) {
  const fs::path target = layout(version);
  const fs::path making = target.string() + ".new";
  std::error_code failed;
  fs::remove_all(making, failed);
  for (const SentFile& file : note.files) {
    const fs::path place = making / file.path;
    fs::create_directories(place.parent_path(), failed);
    if (!failed) fs::create_hard_link(content(file.sha256), place, failed);
    // Some file systems have no links.
    if (failed && failed != std::errc::file_exists) fs::copy_file(content(file.sha256), place, failed);
    if (failed) fail(basic::InQuotes(file.path) + " cannot be laid out: " + failed.message() + ".");
  }
  // One that is there may lack a file that somebody has removed.
  fs::remove_all(target, failed);
  fs::rename(making, target, failed);
  if (failed) fail("It cannot be laid out: " + failed.message() + ".");
}

void DeckCache::keepOnly(const Needs& needs) {
  if (needs_ == needs) return;
  removeOthers(folder_ / "decks", [&](const std::string& name) { return needs.versions.contains(name); });
  removeOthers(folder_ / "partial", [&](const std::string& name) { return needs.coming.contains(name); });
  const auto isNeeded = [&](const std::string& digest) {
    return needs.digests.contains(digest) || needs.coming.contains(digest);
  };
  removeOthers(folder_ / "content", isNeeded);
  std::erase_if(whole_, [&](const auto& each) { return !isNeeded(each.first); });
  needs_ = needs;
}

std::uint64_t DeckCache::bytes() const {
  return std::accumulate(whole_.begin(), whole_.end(), std::uint64_t{0},
                         [](std::uint64_t sum, const auto& each) { return sum + each.second; });
}

fs::path DeckCache::content(const std::string& digest) const { return folder_ / "content" / digest; }
fs::path DeckCache::partial(const std::string& digest) const { return folder_ / "partial" / digest; }
fs::path DeckCache::layout(const std::string& version) const { return folder_ / "decks" / version; }

std::string DeckCache::pathOf(const SentFile& file) const { return content(file.sha256).string(); }
std::string DeckCache::pathOf(const std::string& version, const SentFile& file) const {
  return (layout(version) / file.path).string();
}

}  // namespace app
