// Looks at a deck's file from a thread of its own, and reads what has come to rest.

#include "app/show/DeckWatch.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

#include "app/wiring/Failure.h"
#include "deck/objects/Repair.h"
#include "opc/FileVersions.h"
#include "opc/PackageFile.h"

namespace app {

using std::chrono::steady_clock;

/// What the watching thread and the loop's have in common.
struct DeckWatch::Shared {
  Shared(platform::EventLoop& on, Hearer told) : loop(on), hearer(std::move(told)) {}

  /// From the watching thread: has it told on the loop, unless nobody listens any more.
  void tell(std::function<void(const Hearer&)> what, const std::shared_ptr<Shared>& self) {
    const std::lock_guard lock(mutex);
    if (isOver) return;
    loop.post([self, what = std::move(what)] {
      if (!self->isOver) what(self->hearer);  // set on this thread alone
    });
  }

  platform::EventLoop& loop;
  Hearer hearer;
  std::mutex mutex;
  std::condition_variable over;
  bool isOver = false;
};

class DeckWatch::Lookout {
 public:
  Lookout(std::shared_ptr<Shared> shared, std::string path, const opc::FileState& shown,
          std::size_t fingerprint)
      : shared_(std::move(shared)), path_(std::move(path)), versions_(shown), fingerprint_(fingerprint) {}

  void run() {
    constexpr std::chrono::milliseconds Pause{250};
    std::unique_lock lock(shared_->mutex);
    while (!shared_->over.wait_for(lock, Pause, [this] { return shared_->isOver; })) {
      lock.unlock();
      look();
      lock.lock();
    }
  }

 private:
  void look() {
    using Finding = opc::FileVersions::Finding;
    const auto state = opc::stateOfFile(path_);
    const Finding finding = versions_.look(state, steady_clock::now());
    if (finding == Finding::StillBroken) {
      shared_->tell([why = why_](const Hearer& hearer) { hearer.broken(why); }, shared_);
    }
    if (finding != Finding::Due) return;
    try {
      read(*state);
    } catch (const std::exception& error) {
      why_ = error.what();
      versions_.broken();
    }
  }

  void read(const opc::FileState& settled) {
    opc::FileContent content = opc::readPackageFile(path_);
    // Written again meanwhile: the next looks find it.
    if (content.state != settled) return;
    auto version = std::make_shared<DeckVersion>();
    version->package = opc::Package::fromBytes(std::move(content.bytes), path_);
    version->state = settled;
    const std::size_t fingerprint = version->package->fingerprint();
    if (fingerprint == fingerprint_) return;
    version->package->verify();
    if (const auto damages = deck::repair(*version->package); !damages.empty()) fail(damages.front().text);
    fingerprint_ = fingerprint;
    shared_->tell([version](const Hearer& hearer) { hearer.version(std::move(*version)); }, shared_);
  }

  std::shared_ptr<Shared> shared_;
  std::string path_;
  opc::FileVersions versions_;
  /// Of the version that was told last.
  std::size_t fingerprint_;
  std::string why_;
};

DeckWatch::DeckWatch(platform::EventLoop& loop, std::string path, const opc::FileState& shown,
                     std::size_t fingerprint, Hearer hearer)
    : shared_(std::make_shared<Shared>(loop, std::move(hearer))) {
  std::packaged_task<void()> task([lookout = std::make_shared<Lookout>(shared_, std::move(path), shown,
                                                                       fingerprint)] { lookout->run(); });
  ended_ = task.get_future();
  thread_ = std::thread(std::move(task));
}

DeckWatch::~DeckWatch() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->isOver = true;
  }
  shared_->over.notify_all();
  // It may hang in a file system that does not answer; nobody waits for that.
  constexpr std::chrono::seconds Patience{2};
  if (ended_.wait_for(Patience) == std::future_status::ready) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

}  // namespace app
