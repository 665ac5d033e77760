#pragma once

#include <cstdint>
#include <string>

#include "opc/Package.h"

namespace deck {

/// How a slide comes in: p:transition (ECMA-376 part 1, 19.3.1.50) with the duration
/// that later versions add (p14:dur).
struct TransitionEffect {
  enum class Kind { None, Cut, Fade, Push, Wipe, Split, Cover, Uncover };
  Kind kind = Kind::None;
  /// Where the movement goes: "l", "u", "r", "d" and, for covers, "lu", "ru", "ld",
  /// "rd"; of a split "horz" or "vert" with "-in" or "-out". Empty where it means nothing.
  std::string direction;
  bool throughBlack = false;
  std::int32_t milliseconds = 0;
};

/// The effect of a slide's part. One that is not known here is a fade.
TransitionEffect transitionOf(opc::Part& slide);

}  // namespace deck
