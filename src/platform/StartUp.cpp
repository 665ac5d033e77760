#include "platform/StartUp.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace platform {

void prepareProcess() {
  // The lowest free number is the one that is given out.
  int opened = ::open("/dev/null", O_RDWR);
  while (opened >= 0 && opened <= STDERR_FILENO) opened = ::open("/dev/null", O_RDWR);
  if (opened >= 0) ::close(opened);

  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  sigset_t hangUp;
  sigemptyset(&hangUp);
  sigaddset(&hangUp, SIGHUP);
  sigprocmask(SIG_BLOCK, &hangUp, nullptr);
}

}  // namespace platform
