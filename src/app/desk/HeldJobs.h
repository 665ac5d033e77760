#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/jobs.h"

namespace app {

/// Lets jobs wait until somebody has agreed to them: a deck that comes from elsewhere asks for its sources as
/// soon as it is opened.
class HeldJobs final : public host::Jobs {
 public:
  /// `jobs` does them, and outlives this object.
  explicit HeldJobs(host::Jobs& jobs) : jobs_(jobs) {}

  std::shared_ptr<host::RunningJob> Start(host::Job job) override;

  /// From now on jobs are kept.
  void hold() { isHolding_ = true; }
  /// From now on they are done at once, those that were kept first.
  void release();
  /// From now on they are done at once, but for those that were kept.
  void passOthers() { isHolding_ = false; }

 private:
  class Held;

  host::Jobs& jobs_;
  std::vector<std::shared_ptr<Held>> held_;
  bool isHolding_ = false;
};

}  // namespace app
