#include "app/desk/HeldJobs.h"

#include <utility>

namespace app {

/// Stands for a job before and after it was handed on.
class HeldJobs::Held final : public host::RunningJob {
 public:
  explicit Held(host::Job job) : job_(std::move(job)) {}

  void start(host::Jobs& jobs) {
    if (!isCancelled_) running_ = jobs.Start(std::move(job_));
  }

  void Cancel() override {
    if (running_) return running_->Cancel();
    if (std::exchange(isCancelled_, true)) return;
    if (job_.Done) job_.Done({host::JobEnd::Kind::Cancelled, 0, {}, "It was cancelled before it began."});
  }
  [[nodiscard]] bool HasBegun() const override { return running_ && running_->HasBegun(); }
  [[nodiscard]] bool HasEnded() const override { return running_ ? running_->HasEnded() : isCancelled_; }
  [[nodiscard]] std::int64_t Elapsed() const override { return running_ ? running_->Elapsed() : 0; }

 private:
  host::Job job_;
  std::shared_ptr<host::RunningJob> running_;
  bool isCancelled_ = false;
};

std::shared_ptr<host::RunningJob> HeldJobs::Start(host::Job job) {
  if (!isHolding_) return jobs_.Start(std::move(job));
  return held_.emplace_back(std::make_shared<Held>(std::move(job)));
}

void HeldJobs::release() {
  isHolding_ = false;
  for (const auto& job : std::exchange(held_, {})) job->start(jobs_);
}

}  // namespace app
