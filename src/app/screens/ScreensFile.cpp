// How a list of screens is read, and replaced as a whole.

#include "app/screens/ScreensFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "app/wiring/Failure.h"
#include "opc/SavingFile.h"

namespace app {

namespace {

namespace fs = std::filesystem;

/// Beyond that it is another file.
constexpr std::uint64_t MostBytes = 16U << 20U;

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
  [[maybe_unused]] const int refused = ::fchown(descriptor, before.st_uid, before.st_gid);
  return ::fchmod(descriptor, before.st_mode & Rights) == 0;
}

}  // namespace

ScreenList ScreensFile::read() const {
  std::string text;
  try {
    text = opc::readContent(path_, MostBytes).bytes;
  } catch (const basic::Error& error) {
    fail(path_ + ": the list of screens cannot be read: " + error.description + ".");
  }
  try {
    return ScreenList(text);
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
  ScreenList list = fs::exists(target, failed) ? read() : ScreenList(Head);
  change(list);
  opc::SavingFile file(target);
  if (file.descriptor() < 0 || !setRights(file.descriptor(), target) || !file.write(list.text()) ||
      ::fsync(file.descriptor()) != 0 || !file.close() || !file.renameTo(target, true)) {
    fail(path_ + ": the list of screens cannot be written: " + why());
  }
}

}  // namespace app
