#include "ado/StatementSlot.h"

#include <sql.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace ado {

void StatementSlot::show(void* statement) {
  const std::lock_guard lock(mutex_);
  statement_ = statement;
}

void StatementSlot::hide() { show(nullptr); }

void StatementSlot::interrupt() {
  constexpr std::chrono::milliseconds Longest{5000};
  for (std::chrono::milliseconds pause{20};; pause = std::min(2 * pause, Longest)) {
    {
      const std::lock_guard lock(mutex_);
      if (statement_ == nullptr) return;
      SQLCancel(statement_);
    }
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace ado
