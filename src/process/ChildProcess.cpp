#include "process/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace process {
namespace {

class FileActions {
 public:
  FileActions(const std::string& outputFile, const std::vector<Inherited>& inherited) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, outputFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
    int last = STDERR_FILENO;
    for (const Inherited& each : inherited) {
      posix_spawn_file_actions_adddup2(&actions_, each.ours, each.childs);
      last = std::max(last, each.childs);
    }
    posix_spawn_file_actions_addclosefrom_np(&actions_, last + 1);
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setpgroup(&attributes_, 0);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    // Servers ignore it, other programs rely on it.
    sigset_t pipe = none;
    sigaddset(&pipe, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes_, &pipe);
  }
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::string& outputFile,
                           const std::vector<Inherited>& inherited) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  const FileActions actions(outputFile, inherited);
  const Attributes attributes;
  startError_ =
      ::posix_spawnp(&process_, arguments[0], actions.get(), attributes.get(), arguments.data(), ::environ);
  if (startError_ != 0) process_ = 0;
}

ChildProcess::~ChildProcess() {
  if (process_ == 0) return;
  ::kill(-process_, SIGKILL);
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

std::optional<int> ChildProcess::exitStatus() {
  int status = 0;
  const pid_t ended = process_ == 0 ? -1 : ::waitpid(process_, &status, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return std::nullopt;
  process_ = 0;
  return ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace process
