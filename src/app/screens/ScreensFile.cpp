// How a list of screens is read, and replaced as a whole.

#include "app/screens/ScreensFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/wiring/Failure.h"
#include "opc/SavingFile.h"

namespace app {

namespace {

namespace fs = std::filesystem;

/// Beyond that it is another file.
constexpr std::uintmax_t MostBytes = 16U << 20U;

constexpr const char* Head =
    "# Screens that may look: the SHA-256 of each one's token, and its name.\n"
    "# \"lumenfold screen add NAME\" and \"lumenfold screen revoke NAME\" write it; notes like this stay.\n";

std::string why() { return std::string(std::strerror(errno)) + "."; }

/// As the file before; a new one may be read by the account of the service.
bool setRights(int descriptor, const std::string& path) {
  constexpr mode_t ForAllToRead = 0644;
  constexpr mode_t Rights = 07777;
  struct stat before {};
  if (::stat(path.c_str(), &before) != 0) return ::fchmod(descriptor, ForAllToRead) == 0;
  // Who may not give files away writes one of their own.
  static_cast<void>(::fchown(descriptor, before.st_uid, before.st_gid));
  return ::fchmod(descriptor, before.st_mode & Rights) == 0;
}

}  // namespace

std::optional<ScreensFile::State> ScreensFile::state() const {
  struct stat status {};
  if (::stat(path_.c_str(), &status) != 0) return std::nullopt;
  constexpr std::int64_t Second = 1'000'000'000;
  return State{status.st_dev, status.st_ino, status.st_size,
               status.st_mtim.tv_sec * Second + status.st_mtim.tv_nsec};
}

ScreenList ScreensFile::read() const {
  std::error_code failed;
  if (fs::is_directory(path_, failed)) fail(path_ + " is a folder, not a list of screens.");
  std::ifstream in(path_, std::ios::binary);
  if (!in) fail(path_ + ": the list of screens cannot be read: " + why());
  if (fs::file_size(path_, failed) > MostBytes && !failed)
    fail(path_ + " is too large for a list of screens.");
  std::ostringstream text;
  text << in.rdbuf();
  if (in.bad()) fail(path_ + ": the list of screens cannot be read: " + why());
  try {
    return ScreenList(text.str());
  } catch (const basic::Error& error) {
    fail(path_ + ", " + error.description);
  }
}

void ScreensFile::change(const std::function<void(ScreenList&)>& change) const {
  // What a link leads to is replaced, not the link.
  std::error_code failed;
  fs::path target = fs::weakly_canonical(path_, failed);
  if (failed) target = fs::absolute(path_);
  const opc::SavingLock lock(target.parent_path());
  if (lock.isBusy()) fail(path_ + ": another program is writing into this folder; try again.");
  ScreenList list = state() ? read() : ScreenList(Head);
  change(list);
  opc::SavingFile file(target);
  if (file.descriptor() < 0 || !setRights(file.descriptor(), target) || !file.write(list.text()) ||
      ::fsync(file.descriptor()) != 0 || !file.close() || !file.renameTo(target, true)) {
    fail(path_ + ": the list of screens cannot be written: " + why());
  }
}

}  // namespace app
