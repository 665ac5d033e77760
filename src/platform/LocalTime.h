#pragma once

#include <ctime>

#include "basic/Date.h"

namespace platform {

/// A moment as the system counts it, as date and time of its time zone. Keeps
/// the fraction of the second as far as a Date can: to a microsecond.
basic::Date localDate(const std::timespec& moment);

/// Seconds since midnight, with fraction, in the system's time zone.
double secondsSinceMidnight(const std::timespec& moment);

}  // namespace platform
