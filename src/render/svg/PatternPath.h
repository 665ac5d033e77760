#pragma once

#include "render/paint/Patterns.h"
#include "render/svg/HtmlOut.h"

namespace render {

/// Writes the foreground of a pattern as SVG path data, in px from the pattern's upper left corner.
void patternPath(HtmlOut& out, const PatternRows& rows);

}  // namespace render
