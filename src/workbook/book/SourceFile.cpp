#include "workbook/book/SourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string_view>
#include <utility>

#include "host/drives.h"
#include "workbook/Failure.h"

namespace workbook {
namespace {

/// As of text files.
constexpr std::uint64_t MaximumSize = std::uint64_t{256} << 20U;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int get() const { return number_; }

 private:
  int number_;
};

[[noreturn]] void failReading(const std::string& path, int error) {
  failOpening(path, error == ENOENT ? "there is no such file" : std::strerror(error));
}

struct stat statusOf(const Descriptor& file, const std::string& path) {
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) failReading(path, errno);
  return status;
}

FileStamp stampOf(const struct stat& status) {
  return {status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

struct Reading {
  SourceFile source;
  bool isChanging = false;
};

Reading readOnce(const std::string& path, const host::Drives::GettingOn& gettingOn) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.get() < 0) failReading(path, errno);
  const struct stat status = statusOf(file, path);
  if (S_ISDIR(status.st_mode)) failOpening(path, "it is a folder");
  if (!S_ISREG(status.st_mode)) failOpening(path, "it is no regular file");
  SourceFile source{{}, stampOf(status)};
  if (source.stamp.size > MaximumSize) failOpening(path, "it has more than 256 MiB");

  constexpr std::size_t Piece = std::size_t{1} << 20U;
  source.bytes.data = std::make_unique_for_overwrite<char[]>(source.stamp.size);
  while (source.bytes.size < source.stamp.size) {
    const ssize_t count = ::read(file.get(), source.bytes.data.get() + source.bytes.size,
                                 std::min<std::size_t>(source.stamp.size - source.bytes.size, Piece));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) failReading(path, errno);
    if (count == 0) break;
    source.bytes.size += static_cast<std::size_t>(count);
    gettingOn();
  }
  const bool isChanging = !(stampOf(statusOf(file, path)) == source.stamp);
  return {std::move(source), isChanging};
}

bool isUnfinished(std::string_view bytes) {
  if (bytes.empty()) return true;
  if (!bytes.starts_with("PK")) return false;
  // The end record of a ZIP archive, behind which there is only a comment.
  constexpr std::size_t LongestEnd = 22 + 65535;
  return bytes.substr(bytes.size() - std::min(bytes.size(), LongestEnd)).rfind("PK\x05\x06") ==
         std::string_view::npos;
}

}  // namespace

SourceFile readSourceFile(const std::string& path, host::Loop& loop) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds Patience{300};
  constexpr std::chrono::milliseconds Pause{30};
  const Clock::time_point end = Clock::now() + Patience;
  while (true) {
    auto [source, isChanging] =
        host::OnDrive(path, [path](const auto& gettingOn) { return readOnce(path, gettingOn); });
    const bool isWhole = !isChanging && !isUnfinished({source.bytes.data.get(), source.bytes.size});
    if (isWhole || Clock::now() >= end) return std::move(source);
    for (const Clock::time_point again = Clock::now() + Pause; Clock::now() < again;) loop.DoEvents();
  }
}

}  // namespace workbook
