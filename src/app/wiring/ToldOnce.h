#pragma once

#include <deque>
#include <string>

namespace app {

/// Lines for the errors log, each of which is written once: what fails at every
/// tick must neither fill the disk nor hide the rest. Only the latest are
/// remembered.
class ToldOnce {
 public:
  void tell(const std::string& text);

 private:
  std::deque<std::string> told_;
};

}  // namespace app
