#pragma once

#include "host/services.h"

namespace platform {

/// The system's clock in the system's time zone; a change of either, forward or
/// back, shows at the next call.
class SystemClock final : public host::Clock {
 public:
  [[nodiscard]] basic::Date Now() const override;
  [[nodiscard]] float Timer() const override;
  [[nodiscard]] std::int64_t TickCount() const override;
};

}  // namespace platform
