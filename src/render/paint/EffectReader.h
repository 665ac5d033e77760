#pragma once

#include <pugixml.hpp>

#include "render/paint/Overlay.h"
#include "render/paint/PaintReader.h"

namespace render {

/// What an a:effectLst or a:effectDag states. `turned` is by how many degrees the
/// shape is rotated: effects that do not rotate with it are stated for the page.
Effects readEffects(pugi::xml_node effects, const PaintContext& context, double turned);

/// The a:fillOverlay of the same element.
std::optional<Overlay> readOverlay(pugi::xml_node effects, const PaintContext& context);

/// The raised edge that an a:sp3d states.
std::optional<Bevel> readBevel(pugi::xml_node sp3d);

/// What a:blip's children do to the picture's pixels. The opacity is not among it.
std::vector<PictureEffect> readPictureEffects(pugi::xml_node blip, const PaintContext& context);

}  // namespace render
