// What a show costs through COM, beside the same show straight on the same fakes.
//
// The host's objects are the strict ones of the tests, which look each call up by its name and check it: a
// real host's answer faster or slower, so the number of calls is printed beside the time. Times are the
// process's, of which the shortest of many counts.
#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "fakes/Entry.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "windows/com/Text.h"
#include "windows/loaded/ModulePassage.h"

namespace {

constexpr int Shapes = 100;

/// Milliseconds that this process has computed.
double processTime() {
  FILETIME created;
  FILETIME ended;
  FILETIME kernel;
  FILETIME user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>((std::uint64_t{time.dwHighDateTime} << 32U) + time.dwLowDateTime);
  };
  return (ticks(kernel) + ticks(user)) / 10'000;
}

struct Show {
  explicit Show(int slides) {
    std::string data = "Name\tPrice\n";
    for (int row = 1; row <= Shapes; ++row) data += "Item\t" + std::to_string(row) + "\n";
    machine.files.Write("/decks/prices.txt", data);
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"}};
    for (int i = 0; i < slides; ++i) {
      fakes::Slide& slide = deck->Add();
      for (int row = 1; row <= Shapes; ++row) slide.AddField("shape " + std::to_string(row), row);
    }
    fakes::load(addIn, host);
  }
  void begin() const { host->sink->SlideShowBegin(window); }
  void end() const { host->sink->SlideShowEnd(deck); }

  fakes::Machine machine;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::Window> window = std::make_shared<fakes::Window>(deck);
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;
};

struct Cost {
  double milliseconds = std::numeric_limits<double>::max();
  long calls = 0;
};

/// The least of ten rounds, each long enough for the process's time, whose grain is ten milliseconds.
template <typename Work>
Cost leastOf(const Work& work) {
  constexpr double LongEnough = 200;
  Cost cost;
  for (int round = 0; round < 10; ++round) {
    const long calls = strict::world().calls;
    const double before = processTime();
    double passed = 0;
    int often = 0;
    for (; passed < LongEnough; passed = processTime() - before) {
      work();
      ++often;
    }
    cost.milliseconds = std::min(cost.milliseconds, passed / often);
    cost.calls = (strict::world().calls - calls) / often;
  }
  return cost;
}

Cost idleTick() {
  Show show(2);
  show.begin();
  show.machine.loop.Advance(5000);
  return leastOf([&] { show.machine.loop.Advance(1000); });
}

Cost start() {
  Show show(20);
  const auto work = [&] {
    show.begin();
    show.end();
  };
  return leastOf(work);
}

void print(const char* what, const Cost& direct, const Cost& module, double limit) {
  std::printf("%-36s %9.3f ms direct %9.3f ms through COM, %ld calls (at most %g ms)\n", what,
              direct.milliseconds, module.milliseconds, module.calls, limit);
}

}  // namespace

int main() {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const Cost directTick = idleTick();
  const Cost directStart = start();
  {
    loaded::ModulePassage passage(windows::com::wide(MODULE_WITH_DOOR));
    fakes::passage = &passage;
    print("idle tick, two slides of 100 shapes", directTick, idleTick(), 2);
    print("start and end, 20 slides of 100", directStart, start(), 1000);
    fakes::passage = nullptr;
  }
  CoUninitialize();
  return 0;
}
