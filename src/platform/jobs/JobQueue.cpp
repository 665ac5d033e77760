// Jobs in a row: one at a time, from the bottom of the loop, with deadlines by the clock.

#include "platform/jobs/JobQueue.h"

#include <algorithm>
#include <utility>

namespace platform {

using host::JobEnd;

class JobQueue::Entry final : public host::RunningJob, public std::enable_shared_from_this<Entry> {
 public:
  Entry(JobQueue& queue, std::uint64_t id, host::Job job)
      : isQueueAlive_(queue.isAlive_), queue_(queue), id_(id), job_(std::move(job)) {}

  void Cancel() override {
    if (!*isQueueAlive_) return;
    const auto self = shared_from_this();  // the queue may let go of it
    queue_.cancel(*this, JobEnd::Kind::Cancelled);
  }
  [[nodiscard]] bool HasBegun() const override { return began_ >= 0; }
  [[nodiscard]] bool HasEnded() const override { return hasEnded_; }
  [[nodiscard]] std::int64_t Elapsed() const override {
    if (!HasBegun()) return 0;
    if (hasEnded_ || !*isQueueAlive_) return lasted_;
    return queue_.clock_.TickCount() - began_;
  }

  void begin() { began_ = queue_.clock_.TickCount(); }
  void end(const JobEnd& how) {
    lasted_ = Elapsed();
    hasEnded_ = true;
    // What it holds goes now, not when the last one who asks for its state has gone.
    const host::Job job = std::exchange(job_, {});
    if (job.Done) job.Done(how);
  }
  [[nodiscard]] const host::Job& job() const { return job_; }
  [[nodiscard]] std::uint64_t id() const { return id_; }
  [[nodiscard]] bool isOver() const { return job_.Deadline > 0 && Elapsed() >= job_.Deadline; }

  /// Why it was asked to end early; Done when it was not.
  JobEnd::Kind asked = JobEnd::Kind::Done;

 private:
  std::shared_ptr<const bool> isQueueAlive_;
  JobQueue& queue_;
  std::uint64_t id_;
  host::Job job_;
  std::int64_t began_ = -1;
  std::int64_t lasted_ = 0;
  bool hasEnded_ = false;
};

JobQueue::JobQueue(host::Loop& loop, host::Clock& clock, Bottom bottom)
    : clock_(clock), bottom_(std::move(bottom)), beat_(loop.CreateTimer([this] { beat(); })) {
  beat_->Interval(Beat);
}

JobQueue::~JobQueue() { *isAlive_ = false; }

std::shared_ptr<host::RunningJob> JobQueue::Start(host::Job job) {
  auto entry = std::make_shared<Entry>(*this, ++lastId_, std::move(job));
  waiting_.push_back(entry);
  post();
  tell();
  return entry;
}

void JobQueue::post() {
  if (waiting_.empty() || std::exchange(isPosted_, true)) return;
  bottom_([this, isAlive = isAlive_] {
    if (*isAlive) workOff();
  });
}

void JobQueue::workOff() {
  // Also when whoever hears of its end throws: what waits is done all the same.
  struct Turn {
    explicit Turn(JobQueue& of) : queue(of) {}
    ~Turn() {
      queue.isPosted_ = false;
      queue.done_ = queue.waiting_.empty() ? 0 : queue.done_ + 1;
      queue.post();
      queue.tell();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    JobQueue& queue;
  };
  const Turn turn(*this);
  if (waiting_.empty()) return;
  const auto entry = running_ = waiting_.front();
  waiting_.pop_front();
  entry->begin();
  toldSecond_ = 0;
  beat_->Enabled(true);
  tell();
  JobEnd end = host::DoWork(entry->job());
  if (end.How == JobEnd::Kind::Failed && entry->asked != JobEnd::Kind::Done) end.How = entry->asked;
  beat_->Enabled(false);
  running_.reset();
  entry->end(end);
}

void JobQueue::beat() {
  if (!running_) return;
  const auto entry = running_;
  if (entry->isOver()) {
    cancel(*entry, JobEnd::Kind::TimedOut);
  } else if (entry->asked != JobEnd::Kind::Done) {
    cancel(*entry, entry->asked);
  }
  const std::int64_t second = entry->Elapsed() / 1000;
  if (std::exchange(toldSecond_, second) != second) tell();
}

void JobQueue::cancel(Entry& entry, JobEnd::Kind why) {
  if (entry.HasEnded()) return;
  if (!entry.HasBegun()) {
    std::erase_if(waiting_, [&](const auto& each) { return each.get() == &entry; });
    entry.end({why, 0, {}, "It was cancelled before it began."});
    tell();
    return;
  }
  const bool isNews = entry.asked == JobEnd::Kind::Done;
  if (isNews) entry.asked = why;
  if (const auto cancelWork = entry.job().Cancel) cancelWork();
  if (isNews) tell();
}

std::vector<JobQueue::View> JobQueue::current() const {
  std::vector<View> views;
  const auto add = [&](const Entry& entry) -> View& {
    const host::Job& job = entry.job();
    return views.emplace_back(View{entry.id(), job.Caption, entry.HasBegun(), entry.Elapsed(), job.Deadline,
                                   !entry.HasBegun() || job.Cancel != nullptr,
                                   entry.asked != JobEnd::Kind::Done});
  };
  if (running_) {
    View& view = add(*running_);
    const std::uint64_t all = done_ + 1 + waiting_.size();
    if (all > 1) {
      view.step = done_;
      view.maximum = all;
    }
  }
  for (const auto& entry : waiting_) add(*entry);
  return views;
}

void JobQueue::cancel(std::uint64_t id) {
  if (running_ && running_->id() == id) return running_->Cancel();
  const auto found =
      std::find_if(waiting_.begin(), waiting_.end(), [&](const auto& each) { return each->id() == id; });
  if (found != waiting_.end()) std::shared_ptr(*found)->Cancel();
}

void JobQueue::cancelAll() {
  const auto waiting = waiting_;
  for (const auto& entry : waiting) entry->Cancel();
  if (running_) running_->Cancel();
}

}  // namespace platform
