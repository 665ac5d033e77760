#include "windows/platform/SystemClock.h"

#include <chrono>
#include <cstring>

#include "basic/Date.h"
#include "windows/platform/Library.h"

namespace windows::platform {

namespace {

FILETIME present() {
  using Call = void(WINAPI*)(FILETIME*);
  // Not there before Windows 8.
  static const auto precise =
      procedure<Call>(::GetModuleHandleW(L"kernel32.dll"), "GetSystemTimePreciseAsFileTime");
  FILETIME moment{};
  (precise != nullptr ? precise : &::GetSystemTimeAsFileTime)(&moment);
  return moment;
}

SYSTEMTIME localTime(const FILETIME& moment) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  ::FileTimeToSystemTime(&moment, &universal);
  ::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
  return local;
}

/// Of its second.
double fraction(const FILETIME& moment) {
  constexpr std::uint64_t TicksInSecond = 10'000'000;
  const std::uint64_t ticks = std::uint64_t{moment.dwHighDateTime} << 32U | moment.dwLowDateTime;
  return static_cast<double>(ticks % TicksInSecond) / static_cast<double>(TicksInSecond);
}

basic::Date wholeSeconds(const SYSTEMTIME& local) {
  return basic::DateFrom(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond);
}

}  // namespace

basic::Date localDate(const FILETIME& moment) {
  constexpr double SecondsInDay = 86400;
  const basic::Date whole = wholeSeconds(localTime(moment));
  return {whole.serial + (whole.serial < 0 ? -1 : 1) * fraction(moment) / SecondsInDay};
}

basic::Date SystemClock::Now() const { return wholeSeconds(localTime(present())); }

float SystemClock::Timer() const {
  const FILETIME moment = present();
  const SYSTEMTIME local = localTime(moment);
  return static_cast<float>(local.wHour * 3600 + local.wMinute * 60 + local.wSecond + fraction(moment));
}

std::int64_t SystemClock::TickCount() const {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace windows::platform
