#pragma once

#include <pugixml.hpp>

#include "opc/Package.h"
#include "render/paint/Assets.h"
#include "render/scene/Scene.h"

namespace render {

/// The film or sound that a p:pic stands for, when the slide plays it by itself and
/// browsers can; otherwise the picture is all there is to show.
std::optional<Media> readMedia(pugi::xml_node picture, opc::Part& slide, Assets& assets);

}  // namespace render
