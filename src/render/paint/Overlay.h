#pragma once

#include "render/paint/Paint.h"

namespace render {

/// Laid upon a shape's own fill (a:fillOverlay, ECMA-376 part 1, 20.1.8.29).
struct Overlay {
  Fill fill;
  /// As CSS names it (mix-blend-mode: "multiply"); lives as long as the program.
  const char* blending = "normal";
};

}  // namespace render
