// Lock files that stand for decks, and come and go without a moment in which two hold one.

#include "app/desk/DeckLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <utility>

#include "basic/Quotes.h"
#include "opc/Files.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr const char* NotLocked = "Nobody can be kept from editing the deck at the same time: ";

/// FNV-1a, as names must be the same in every run.
std::string numberOf(const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  std::string digits;
  for (int i = 0; i < 16; ++i, hash >>= 4U) digits += "0123456789abcdef"[hash & 15U];
  return digits;
}

std::string inodeName(const std::string& deck) {
  const auto state = opc::stateOfFile(deck);
  return state ? std::to_string(state->device) + "-" + std::to_string(state->inode) + ".lock" : std::string();
}

bool isStill(const process::Descriptor& file, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(file.get(), &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

std::string contentOf(const process::Descriptor& file) {
  std::array<char, 4096> content{};
  const ssize_t size = ::pread(file.get(), content.data(), content.size(), 0);
  return {content.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
}

}  // namespace

std::string stateNameOf(const std::string& deck) {
  std::error_code error;
  const fs::path full = fs::weakly_canonical(fs::absolute(deck), error);
  const std::string path = error ? deck : full.string();
  // Names of files end at 255 bytes.
  return fs::path(path).filename().string().substr(0, 100) + "-" + numberOf(path);
}

DeckLock::DeckLock(std::string folder, std::string deck)
    : folder_(std::move(folder)), deck_(std::move(deck)) {
  std::error_code error;
  fs::create_directories(folder_, error);
  take(stateNameOf(deck_) + ".lock");
  if (!isTaken_) follow();
}

DeckLock::~DeckLock() {
  while (!held_.empty()) release(std::string(held_.begin()->first));
}

void DeckLock::take(const std::string& name) {
  if (name.empty() || held_.contains(name)) return;
  const std::string path = folder_ + "/" + name;
  while (true) {
    process::Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isOpen()) {
      problem_ = NotLocked + basic::InQuotes(path) + " cannot be written: " + std::strerror(errno) + ".";
      return;
    }
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno == EWOULDBLOCK) {
        isTaken_ = true;
        theirAddress_ = contentOf(file);
      } else {
        problem_ = NotLocked + basic::InQuotes(path) + " cannot be locked: " + std::strerror(errno) + ".";
      }
      return;
    }
    // Who held it may have removed it just before it was locked.
    if (!isStill(file, path)) continue;
    write(file);
    held_.emplace(name, std::move(file));
    return;
  }
}

void DeckLock::release(const std::string& name) {
  const auto held = held_.find(name);
  if (held == held_.end()) return;
  ::unlink((folder_ + "/" + name).c_str());
  held_.erase(held);
}

void DeckLock::write(const process::Descriptor& file) const {
  if (::ftruncate(file.get(), 0) != 0) return;
  // Whoever reads less than all of it prints less: a file of one line on a disk that is full.
  static_cast<void>(::pwrite(file.get(), address_.data(), address_.size(), 0) == 0);
}

void DeckLock::tell(std::string address) {
  address_ = std::move(address);
  for (const auto& [name, file] : held_) write(file);
}

void DeckLock::follow() {
  const std::string name = inodeName(deck_);
  if (name == byInode_) return;
  take(name);
  release(std::exchange(byInode_, name));
}

}  // namespace app
