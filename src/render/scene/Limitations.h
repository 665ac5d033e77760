#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presentationml/ShapeNode.h"

namespace render {

/// Something on a slide that pages show otherwise than PowerPoint.
struct Limitation {
  /// Name of the top-level shape that it is in.
  std::string shape;
  /// Whether it is drawn, if only nearly.
  bool isDrawn = false;
  /// What, as a noun, and what is drawn instead. It lives as long as the program.
  std::string_view what;
};

/// What of docs/linking/what-is-drawn.md's "nearly" and "no" is on a slide, each once per shape.
std::vector<Limitation> findLimitations(const presentationml::ShapeIndex& shapes);

}  // namespace render
