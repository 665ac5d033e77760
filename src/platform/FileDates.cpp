#include "platform/FileDates.h"

#include <cstddef>

namespace platform {
namespace {

bool areEqual(const std::timespec& a, const std::timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

FileDates::Known::Known(const struct stat& status)
    : changed(status.st_mtim),
      statusChanged(status.st_ctim),
      device(status.st_dev),
      inode(status.st_ino),
      size(status.st_size) {}

bool FileDates::Known::hasSameTime(const Known& other) const { return areEqual(changed, other.changed); }

bool FileDates::Known::hasSameRest(const Known& other) const {
  return areEqual(statusChanged, other.statusChanged) && device == other.device && inode == other.inode &&
         size == other.size;
}

std::timespec FileDates::of(const std::string& file, const struct stat& status) {
  // Pictures may have ever new names. Who is forgotten is at most read once too often.
  constexpr std::size_t MostFiles = 10000;
  if (known_.size() >= MostFiles && !known_.contains(file)) known_.clear();

  Known present(status);
  Known& known = known_.try_emplace(file, present).first->second;
  if (known.hasSameTime(present)) present.moves = known.moves + (known.hasSameRest(present) ? 0 : 1);
  known = present;

  constexpr long HalfSecond = 500'000'000;
  constexpr long Step = 1'000'000;
  std::timespec moved = present.changed;
  const long half = moved.tv_nsec < HalfSecond ? 0 : HalfSecond;
  moved.tv_nsec = half + (moved.tv_nsec - half + present.moves % (HalfSecond / Step) * Step) % HalfSecond;
  return moved;
}

}  // namespace platform
