#include "app/wiring/ToldOnce.h"

#include <algorithm>

#include "addin/support/modErrors.h"

namespace app {

void ToldOnce::tell(const std::string& text) {
  constexpr std::size_t Remembered = 500;
  if (std::find(told_.begin(), told_.end(), text) != told_.end()) return;
  told_.push_back(text);
  if (told_.size() > Remembered) told_.pop_front();
  LF2000::modErrors::WriteErrorLog(text);
}

}  // namespace app
