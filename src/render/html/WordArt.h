#pragma once

#include "render/svg/HtmlOut.h"
#include "render/text/Text.h"

namespace render {

/// Writes text that fills its area in a warp's form, as outlines. False, and nothing written, when the text
/// has no warp or this machine has no outlines for it.
bool writeWordArt(HtmlOut& out, const TextBody& body, const Rect& area, double rotation);

}  // namespace render
