#pragma once

#include <cstddef>

namespace render {

/// One preset shape of ECMA-376 part 1, 20.1.9 as text.
struct PresetText {
  const char* name;
  /// "name formula;..." each; an adjust value's formula is its default.
  const char* adjusts;
  const char* guides;
  /// Guide names or numbers: left, top, right, bottom of the text rectangle.
  const char* textRect;
  /// Paths separated by '|': attributes (w= h= fill= stroke=), then commands
  /// M L A Q C Z with their operands (A: wR hR stAng swAng).
  const char* paths;
};

/// Sorted by name.
extern const PresetText PresetTable[];
extern const std::size_t PresetTableSize;

}  // namespace render
