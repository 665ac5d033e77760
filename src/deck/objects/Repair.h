#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "opc/Package.h"

namespace deck {

/// Something in a deck that cannot be read.
struct Damage {
  /// From 1; 0 when it is no matter of one slide.
  std::int32_t slide = 0;
  /// One sentence or more: what, where, why, and what stands in for it.
  std::string text;
};

/// Makes a deck readable in memory whose parts are not all there or not whole:
/// XML that cannot be read becomes empty, a slide that cannot be read or is
/// missing becomes an empty one, and a slide without a layout is put on an empty
/// layout of the deck's first master. What remains is read as if it had been so.
/// Pictures and other binary parts are left to who reads them. Throws basic::Error
/// when nothing can be shown: without content types, presentation part or any whole
/// slide.
std::vector<Damage> repair(opc::Package& package);

}  // namespace deck
