#include "platform/DetachedProcess.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace platform {
namespace {

/// In the child: only what is safe between fork and exec.
[[noreturn]] void execute(const char* program, const char* argument, int failure) {
  ::setsid();
  const int nothing = ::open("/dev/null", O_RDWR);
  for (int descriptor = 0; descriptor < 3; ++descriptor) ::dup2(nothing, descriptor);
  ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execlp(program, program, argument, static_cast<char*>(nullptr));
  const char failed = 1;
  [[maybe_unused]] const ssize_t written = ::write(failure, &failed, 1);
  ::_exit(127);
}

}  // namespace

bool startDetached(const std::string& program, const std::string& argument) {
  // Closed by a successful exec, so that reading it tells whether there was one.
  std::array<int, 2> failure{};
  if (::pipe2(failure.data(), O_CLOEXEC) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) {
    // The grandchild is adopted by the system, which also sees it off.
    const pid_t grandchild = ::fork();
    if (grandchild == 0) execute(program.c_str(), argument.c_str(), failure[1]);
    ::_exit(grandchild > 0 ? 0 : 1);
  }
  ::close(failure[1]);
  int status = 1;
  while (child > 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  char failed = 0;
  ssize_t count = 0;
  while ((count = ::read(failure[0], &failed, 1)) < 0 && errno == EINTR) {
  }
  ::close(failure[0]);
  return child > 0 && status == 0 && count == 0;
}

}  // namespace platform
