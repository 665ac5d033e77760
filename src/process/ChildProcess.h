#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace process {

/// A descriptor of ours that a child gets under a number of its own. The number
/// is above 2; ours is above all of them.
struct Inherited {
  int ours = -1;
  int childs = -1;
};

/// A program started in a process group of its own, without input, its output
/// going to a file. What still runs is killed with it.
class ChildProcess {
 public:
  /// Finds the program by PATH. Nothing is running when it could not be started.
  ChildProcess(const std::vector<std::string>& command, const std::string& outputFile,
               const std::vector<Inherited>& inherited = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The reason (errno) that it could not be started, 0 if it was.
  [[nodiscard]] int startError() const { return startError_; }
  /// The exit status when it has ended, -1 if a signal ended it.
  [[nodiscard]] std::optional<int> exitStatus();

 private:
  pid_t process_ = 0;
  int startError_ = 0;
};

}  // namespace process
