#include "model/modCommandState.h"

#include <utility>

namespace LF2000::modCommandState {

namespace {
Listener told;
}

void ToldTo(Listener listener) { told = std::move(listener); }

void TellDisplayType(std::int32_t code) {
  if (told.DisplayType) told.DisplayType(code);
}

void TellChanged() {
  if (told.Changed) told.Changed();
}

}  // namespace LF2000::modCommandState
