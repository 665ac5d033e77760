#pragma once

#include <memory>
#include <string>

#include "host/services.h"
#include "process/ChildProcess.h"

namespace app {

/// A show of the deck's file beside the desk, by this program, for as long as this object lives.
class ShowProcess {
 public:
  /// Its output goes to the file. The loop outlives this object.
  ShowProcess(std::string outputFile, host::Loop& loop);
  ~ShowProcess();
  ShowProcess(const ShowProcess&) = delete;
  ShowProcess& operator=(const ShowProcess&) = delete;

  /// The address of its screens, as soon as it has one; begins the show unless it runs. The loop runs
  /// meanwhile. Throws what the show said when it does not begin.
  std::string url(const std::string& deck);

 private:
  [[nodiscard]] std::string output() const;

  std::string outputFile_;
  host::Loop& loop_;
  std::unique_ptr<process::ChildProcess> show_;
  bool isBeginning_ = false;
};

}  // namespace app
