#pragma once

#include <cstdint>

#include "host/powerpoint.h"

/// Walks over what a presentation holds, in its order.
namespace LF2000::modSlides {

/// Calls `visit(PowerPoint::Slide&)`.
template <typename Visit>
void ForEachSlide(PowerPoint::Presentation& presentation, Visit&& visit) {
  const auto slides = presentation.Slides();
  for (std::int32_t i = 1; i <= slides->Count(); ++i) visit(*slides->Item(i));
}

/// Calls `visit(std::shared_ptr<PowerPoint::Shape>)`.
template <typename Visit>
void ForEachShape(PowerPoint::Slide& slide, Visit&& visit) {
  const auto shapes = slide.Shapes();
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) visit(shapes->Item(i));
}

}  // namespace LF2000::modSlides
