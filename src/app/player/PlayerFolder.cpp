// The thread that collects decks, and what the loop sees of it.

#include "app/player/PlayerFolder.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <filesystem>
#include <mutex>
#include <utility>

#include "app/distribution/Digest.h"
#include "app/player/DeckCollector.h"
#include "app/player/LocalFolder.h"
#include "app/player/WebFolder.h"
#include "app/player/WhyNot.h"
#include "app/wiring/Failure.h"
#include "platform/UserFolders.h"
#include "process/BackgroundThread.h"

namespace app {
namespace {

/// Between two looks where nothing tells of changes; while something is being written; and at least.
constexpr std::chrono::milliseconds IdlePause{1000};
constexpr std::chrono::milliseconds BusyPause{250};
constexpr std::chrono::milliseconds ShortestPause{100};

std::int64_t ticks() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// What a step throws when nobody waits for it any more.
struct IsOver {};

}  // namespace

/// What the thread tells the loop.
struct Findings {
  std::vector<CollectedDeck> decks;
  std::string trouble;
  bool wasRead = false;
  bool isSettled = false;

  friend bool operator==(const Findings&, const Findings&) = default;
};

/// What the collecting thread and the loop's have in common.
struct PlayerFolder::Shared : std::enable_shared_from_this<Shared> {
  Shared(platform::EventLoop& on, host::Clock& by, std::function<void(const std::string&)> line)
      : loop(on), clock(by), log(std::move(line)) {}

  // For the loop's thread.
  void take(const Findings& found);
  /// Answers whether a deck is another thing than before.
  bool judge();
  void end();

  // For the collecting thread.
  void run(DeckFolder& folder, DeckCache& cache, const PlayerFolderOptions& options);
  void goOn() const {
    if (isOver) throw IsOver{};
  }
  void rest(DeckFolder& folder, std::chrono::milliseconds pause);
  /// Has something done on the loop, unless the object is gone.
  void tell(std::function<void(Shared&)> what);

  platform::EventLoop& loop;
  host::Clock& clock;
  std::function<void(const std::string&)> log;
  std::function<void()> changed;
  std::unique_ptr<host::Timer> timer;
  Findings findings;
  std::vector<FolderDeck> decks;

  KeptVersions kept;
  /// The time on the wall, as the loop read it last.
  std::atomic<double> now = 0;
  process::Descriptor wake{::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
  std::atomic<bool> isOver = false;
  std::mutex mutex;
  std::condition_variable over;
  bool hasEnded = false;
};

void PlayerFolder::Shared::tell(std::function<void(Shared&)> what) {
  const std::lock_guard lock(mutex);
  if (isOver) return;
  loop.post([self = shared_from_this(), what = std::move(what)] {
    if (!self->isOver) what(*self);
  });
}

void PlayerFolder::Shared::run(DeckFolder& folder, DeckCache& cache, const PlayerFolderOptions& options) {
  Findings told;
  std::function<void()> publish;
  DeckCollector collector(
      folder, cache, kept, {options.computer, options.trust, options.cacheBytes},
      {[&publish] { publish(); },
       [this](const std::string& line) { tell([line](Shared& self) { self.log(line); }); }});
  publish = [this, &collector, &told] {
    Findings found{collector.decks(), collector.trouble(), collector.wasRead(), collector.isSettled()};
    if (found == told) return;
    told = found;
    tell([found = std::move(found)](Shared& self) { self.take(found); });
  };
  const auto step = [this](const auto& act) {
    goOn();
    try {
      act();
    } catch (const std::exception& error) {
      // Memory that is out, for one; the next look may have it.
      tell([why = std::string(error.what())](Shared& self) {
        self.log("The folder could not be looked at: " + why);
      });
    }
  };
  step([&] { collector.begin({now}); });
  for (;;) {
    step([&] { collector.look({now}, ticks()); });
    rest(folder, collector.isBusy() ? BusyPause : IdlePause);
  }
}

void PlayerFolder::Shared::rest(DeckFolder& folder, std::chrono::milliseconds pause) {
  const auto wait = [](std::initializer_list<int> descriptors, std::chrono::milliseconds longest) {
    std::array<pollfd, 2> polled{};
    nfds_t count = 0;
    for (const int each : descriptors) polled.at(count++) = {each, POLLIN, 0};
    ::poll(polled.data(), count, static_cast<int>(longest.count()));
  };
  // A folder in which something changes all the time is not looked at all the time.
  wait({wake.get()}, ShortestPause);
  if (isOver) return;
  wait({wake.get(), folder.changes()}, pause - ShortestPause);
  folder.heard();
}

void PlayerFolder::Shared::take(const Findings& found) {
  const bool isOther = found.trouble != findings.trouble || found.wasRead != findings.wasRead;
  findings = found;
  if ((judge() || isOther) && changed) changed();
}

bool PlayerFolder::Shared::judge() {
  const basic::Date present = clock.Now();
  now = present.serial;
  std::vector<FolderDeck> judgedNow;
  for (const CollectedDeck& each : findings.decks) judgedNow.push_back(judged(each, present));
  if (judgedNow == decks) return false;
  decks = std::move(judgedNow);
  return true;
}

void PlayerFolder::Shared::end() {
  {
    const std::lock_guard lock(mutex);
    isOver = true;
  }
  timer.reset();
  changed = nullptr;
  const std::uint64_t one = 1;
  static_cast<void>(!::write(wake.get(), &one, sizeof one));
  // It may hang in a file system that does not answer; nobody waits for that.
  constexpr std::chrono::seconds Patience{2};
  std::unique_lock lock(mutex);
  over.wait_for(lock, Patience, [this] { return hasEnded; });
}

PlayerFolder::PlayerFolder(platform::EventLoop& loop, host::Clock& clock, const PlayerFolderOptions& options,
                           std::function<void(const std::string&)> log)
    : PlayerFolder(
          loop, clock, options,
          [&place = options.place](const DeckFolder::GoOn& goOn) -> std::shared_ptr<DeckFolder> {
            if (WebFolder::isAddress(place)) return std::make_shared<WebFolder>(place, goOn);
            return std::make_shared<LocalFolder>(std::filesystem::absolute(place).string(), ticks, goOn);
          },
          std::move(log)) {}

PlayerFolder::PlayerFolder(platform::EventLoop& loop, host::Clock& clock, PlayerFolderOptions options,
                           const MakeFolder& make, std::function<void(const std::string&)> log)
    : shared_(std::make_shared<Shared>(loop, clock, std::move(log))) {
  shared_->now = clock.Now().serial;
  // The thread holds both.
  auto folder = make([shared = shared_.get()] { shared->goOn(); });
  auto cache = std::make_shared<DeckCache>(options.cache);
  shared_->timer = loop.CreateTimer([shared = shared_.get()] {
    if (shared->judge() && shared->changed) shared->changed();
  });
  shared_->timer->Interval(1000);
  shared_->timer->Enabled(true);
  process::startThread([shared = shared_, folder = std::move(folder), cache = std::move(cache),
                        options = std::move(options)]() mutable {
    try {
      shared->run(*folder, *cache, options);
    } catch (const IsOver&) {
    }
    folder.reset();
    cache.reset();
    const std::lock_guard lock(shared->mutex);
    shared->hasEnded = true;
    shared->over.notify_all();
  });
}

PlayerFolder::~PlayerFolder() { shared_->end(); }

const std::vector<FolderDeck>& PlayerFolder::decks() const { return shared_->decks; }
void PlayerFolder::onChange(std::function<void()> changed) { shared_->changed = std::move(changed); }
bool PlayerFolder::wasRead() const { return shared_->findings.wasRead; }
bool PlayerFolder::isSettled() const { return shared_->findings.isSettled; }
std::string PlayerFolder::trouble() const { return shared_->findings.trouble; }
std::shared_ptr<const void> PlayerFolder::keep(const FolderDeck& deck) {
  return shared_->kept.keep(deck.version);
}

std::string PlayerFolder::usualCache(const PlayerFolderOptions& options) {
  const std::string key = options.trust ? options.trust->id() : std::string();
  const std::string name = sha256(options.place + '\n' + options.computer + '\n' + key).substr(0, 16);
  return platform::cacheFolder() + "/players/" + name;
}

}  // namespace app
