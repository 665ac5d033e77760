#include "app/player/DeckReader.h"

#include <cmath>
#include <exception>
#include <mutex>
#include <utility>

#include "app/wiring/Failure.h"
#include "deck/objects/Repair.h"
#include "deck/show/ShowCourse.h"
#include "opc/PackageFile.h"
#include "process/BackgroundThread.h"

namespace app {

namespace {

TimedDeck timesOf(const std::shared_ptr<deck::Presentation>& deck, const deck::SlideShowOptions& show) {
  const deck::ShowCourse course(deck, show);
  TimedDeck times;
  for (std::size_t place = 0; place < course.slides().size(); ++place) {
    const std::int32_t slide = course.slides()[place];
    const double stay = std::max(1.0, std::round(course.stay(slide).value_or(0)));
    if (!deck->isHidden(slide)) times.push_back({place, slide, static_cast<std::int64_t>(stay)});
  }
  return times;
}

}  // namespace

DeckRead readDeck(const std::string& file, const std::string& path, const deck::SlideShowOptions& show) {
  DeckRead read;
  try {
    opc::FileContent content = opc::readPackageFile(file);
    auto package = opc::Package::fromBytes(std::move(content.bytes), path);
    std::vector<deck::Damage> damages = deck::repair(*package);
    auto deck =
        std::make_shared<deck::Presentation>(std::move(package), path, content.state, std::move(damages));
    read.times = timesOf(deck, show);
    if (read.times.empty()) fail("All slides of " + path + " are hidden.");
    read.deck = std::move(deck);
  } catch (const basic::Error& error) {
    read.why = error.description;
  } catch (const std::exception& error) {
    read.why = path + " cannot be read: " + error.what();
  }
  return read;
}

/// What the reading threads and the loop's have in common.
struct DeckReader::Shared {
  explicit Shared(platform::EventLoop& on) : loop(on) {}

  platform::EventLoop& loop;
  std::mutex mutex;
  bool isOver = false;
};

DeckReader::DeckReader(platform::EventLoop& loop) : shared_(std::make_shared<Shared>(loop)) {}

DeckReader::~DeckReader() {
  const std::lock_guard lock(shared_->mutex);
  shared_->isOver = true;
}

void DeckReader::read(const std::string& file, const std::string& path, const deck::SlideShowOptions& show,
                      std::function<void(DeckRead)> then) {
  process::startThread([shared = shared_, file, path, show, then = std::move(then)] {
    auto read = std::make_shared<DeckRead>(readDeck(file, path, show));
    const std::lock_guard lock(shared->mutex);
    if (shared->isOver) return;
    shared->loop.post([shared, read, then] {
      if (!shared->isOver) then(std::move(*read));  // set on this thread alone
    });
  });
}

}  // namespace app
