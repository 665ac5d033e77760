#include "app/distribution/SendersLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"

namespace app {

SendersLock::SendersLock(const std::filesystem::path& folder) {
  constexpr int Attempts = 500;
  constexpr std::chrono::milliseconds Pause{20};
  constexpr mode_t EverySender = 0666;
  const std::filesystem::path path = folder / ".lumenfold-senders.lock";
  file_.reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, EverySender));
  // One of another user.
  if (!file_.isOpen()) file_.reset(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  for (int i = 0; file_.isOpen(); ++i) {
    if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
    if (i == Attempts)
      fail("Somebody else is sending into " + basic::InQuotes(folder.string()) + "; try again.");
    std::this_thread::sleep_for(Pause);
  }
}

}  // namespace app
