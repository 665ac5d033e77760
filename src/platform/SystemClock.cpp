#include "platform/SystemClock.h"

#include <chrono>

#include "platform/LocalTime.h"

namespace platform {
namespace {

std::timespec present() {
  std::timespec moment{};
  std::timespec_get(&moment, TIME_UTC);
  return moment;
}

}  // namespace

basic::Date SystemClock::Now() const {
  std::timespec moment = present();
  moment.tv_nsec = 0;
  return localDate(moment);
}

float SystemClock::Timer() const { return static_cast<float>(secondsSinceMidnight(present())); }

std::int64_t SystemClock::TickCount() const {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace platform
