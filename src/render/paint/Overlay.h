#pragma once

#include "render/paint/Paint.h"

namespace render {

/// Laid upon a shape's own fill (a:fillOverlay).
struct Overlay {
  Fill fill;
  /// As CSS names it ("multiply").
  const char* blending = "normal";
};

}  // namespace render
