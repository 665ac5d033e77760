#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/FakeServices.h"
#include "platform/jobs/JobQueue.h"

namespace fakes {

/// A machine that queues what may wait. A turn of its loop takes 10 ms.
class JobMachine : public Machine {
 public:
  JobMachine() {
    UseJobs(&jobs);
    loop.onDoEvents = [this] { loop.Advance(10); };
  }

  /// Works off what is queued, from the bottom of the loop. How many turns that took.
  int RunJobs() {
    int turns = 0;
    for (; !posted_.empty(); ++turns) {
      const auto handlers = std::exchange(posted_, {});
      for (const auto& handler : handlers) handler();
    }
    return turns;
  }
  std::vector<std::string> Captions() const {
    std::vector<std::string> captions;
    for (const auto& job : jobs.current()) captions.push_back(job.caption);
    return captions;
  }

 private:
  std::vector<std::function<void()>> posted_;

 public:
  platform::JobQueue jobs{loop, clock,
                          [this](std::function<void()> handler) { posted_.push_back(std::move(handler)); }};
};

}  // namespace fakes
