#pragma once

#include "host/services.h"
#include "windows/com/WindowsApi.h"

namespace windows::platform {

/// The system's clock in the user's time zone, by its finest ticks: what was waited for has passed by it,
/// too.
class SystemClock final : public host::Clock {
 public:
  [[nodiscard]] basic::Date Now() const override;
  [[nodiscard]] float Timer() const override;
  [[nodiscard]] std::int64_t TickCount() const override;
};

/// In the user's time zone, by the rules of that day; with fractions of a second.
[[nodiscard]] basic::Date localDate(const FILETIME& moment);

}  // namespace windows::platform
