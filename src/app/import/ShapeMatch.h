#pragma once

#include <vector>

#include "app/import/NewShapes.h"
#include "ppt/Deck.h"

namespace app {

/// Which shape of a converted slide is which of the old one. The shapes outlive it.
struct ShapeMatch {
  struct Pair {
    const ppt::Shape* old = nullptr;
    const NewShape* made = nullptr;
  };
  std::vector<Pair> pairs;
  /// Those that are not on the new slide, or of which several could be the same new one.
  std::vector<const ppt::Shape*> lost;
};

/// Goes by the drawing order where it fits, and where shapes came or went by place, text and kind as well.
/// The date, footer and number that a converter adds count as none. No shape is ever paired that looks like
/// another one.
ShapeMatch matchShapes(const std::vector<ppt::Shape>& old, const std::vector<NewShape>& made);

}  // namespace app
