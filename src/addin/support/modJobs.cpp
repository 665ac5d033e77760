#include "addin/support/modJobs.h"

#include <cstdint>
#include <utility>

#include "host/services.h"

namespace LF2000::modJobs {

namespace {

class EndedJob final : public host::RunningJob {
 public:
  void Cancel() override {}
  [[nodiscard]] bool HasBegun() const override { return true; }
  [[nodiscard]] bool HasEnded() const override { return true; }
  [[nodiscard]] std::int64_t Elapsed() const override { return 0; }
};

}  // namespace

std::shared_ptr<host::RunningJob> Start(host::Job job) {
  if (host::Jobs* jobs = host::Current().jobs) return jobs->Start(std::move(job));
  const host::JobEnd end = host::DoWork(job);
  if (job.Done) job.Done(end);
  return std::make_shared<EndedJob>();
}

}  // namespace LF2000::modJobs
