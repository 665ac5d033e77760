// Questions to drives of other machines: a thread each, and the patience of who waits for it.

#include "platform/NetworkDrives.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <utility>

#include "basic/Error.h"
#include "process/BackgroundThread.h"

namespace platform {
namespace {

constexpr std::int64_t Patience = 2000;
constexpr std::int64_t Pause = 10000;
constexpr std::int64_t Moment = 200;
constexpr long MostThreads = 4;

[[noreturn]] void failSilent(const std::string& path, const NetworkMount& mount) {
  throw basic::Error(
      basic::AdapterError, "Lumenfold",
      "'" + path + "' cannot be reached: the network drive '" + mount.point + "' does not answer.");
}

}  // namespace

/// Shared with the thread that works on it.
struct NetworkDrives::Question {
  std::mutex mutex;
  std::condition_variable changed;
  std::exception_ptr failure;
  bool isAnswered = false;
  bool wasQuick = false;
  std::atomic<unsigned> steps = 0;
  // Of who waits:
  unsigned seenSteps = 0;
  std::int64_t movedAt = 0;

  void answer(const Work& work) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    std::exception_ptr failed;
    try {
      work([this] { ++steps; });
    } catch (...) {
      failed = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    failure = failed;
    isAnswered = true;
    wasQuick = Clock::now() - begin < std::chrono::milliseconds(Patience);
    changed.notify_all();
  }

  /// Most drives answer faster than the loop would come back.
  bool isAnsweredSoon() {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(2), [this] { return isAnswered; });
  }

  bool isAnsweredNow() {
    const std::lock_guard lock(mutex);
    return isAnswered;
  }

  bool wasAnsweredQuickly() {
    const std::lock_guard lock(mutex);
    return isAnswered && wasQuick;
  }
};

void NetworkDrives::Ask(const std::string& path, Work work) {
  std::shared_ptr<void> underWay;
  static_cast<void>(ask(path, underWay, work, /*isBrief=*/false));
}

bool NetworkDrives::AskBriefly(const std::string& path, std::shared_ptr<void>& underWay, Work work) {
  return ask(path, underWay, work, /*isBrief=*/true);
}

bool NetworkDrives::ask(const std::string& path, std::shared_ptr<void>& underWay, const Work& work,
                        bool isBrief) {
  const std::optional<NetworkMount> mount = mountOf_(path);
  if (!mount) {
    work([] {});
    return true;
  }
  std::shared_ptr<Drive>& known = drives_[mount->id];
  if (!known) known = std::make_shared<Drive>();
  const std::shared_ptr<Drive> drive = known;
  if (drive->isSilent) tryAgain(*drive, work);
  auto question = std::static_pointer_cast<Question>(std::exchange(underWay, nullptr));
  if (!drive->isSilent && question == nullptr) question = put(*drive, work);
  if (question == nullptr || drive->isSilent) failSilent(path, *mount);

  const bool isLate = drive->late != nullptr && !drive->late->isAnsweredNow();
  const std::int64_t moment = isLate ? 0 : Moment;
  const bool isAnswered = waitFor(*question, *drive, isBrief ? std::optional(moment) : std::nullopt);
  if (drive->isSilent) failSilent(path, *mount);
  if (!isAnswered) {
    drive->late = question;
    underWay = question;
    return false;
  }
  if (question->failure) std::rethrow_exception(question->failure);
  return true;
}

/// Nothing when the drive holds too many threads already, or the machine gives none.
std::shared_ptr<NetworkDrives::Question> NetworkDrives::put(const Drive& drive, const Work& work) try {
  if (drive.threads.use_count() > MostThreads) return nullptr;
  auto question = std::make_shared<Question>();
  question->movedAt = clock_.TickCount();
  process::startThread([question, thread = drive.threads, work] { question->answer(work); });
  return question;
} catch (const std::system_error&) {
  return nullptr;
}

/// A silent drive, without keeping anybody waiting.
void NetworkDrives::tryAgain(Drive& drive, const Work& work) {
  if (drive.lastTry != nullptr && drive.lastTry->wasAnsweredQuickly()) {
    drive.isSilent = false;
    drive.lastTry.reset();
  } else if (clock_.TickCount() - drive.triedAt >= Pause) {
    drive.triedAt = clock_.TickCount();
    drive.lastTry = put(drive, work);
  }
}

/// False when there was no answer, for that long or from a drive that is silent.
bool NetworkDrives::waitFor(Question& question, Drive& drive, std::optional<std::int64_t> longest) {
  const std::int64_t begin = clock_.TickCount();
  for (; !drive.isSilent; loop_.DoEvents()) {
    if (question.isAnsweredSoon()) return true;
    const std::int64_t now = clock_.TickCount();
    if (const unsigned steps = question.steps; steps != question.seenSteps) {
      question.seenSteps = steps;
      question.movedAt = now;
    }
    if (now - question.movedAt >= Patience) {
      drive.isSilent = true;
      drive.triedAt = now;
    }
    if (longest && now - begin >= *longest) return false;
  }
  return false;
}

}  // namespace platform
