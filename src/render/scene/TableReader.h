#pragma once

#include <memory>
#include <pugixml.hpp>

#include "render/scene/Inheritance.h"
#include "render/scene/Scene.h"
#include "render/text/TextReader.h"

namespace render {

/// An a:tbl with its style resolved. Cells that a merged one covers are left out.
std::shared_ptr<const Table> readTable(pugi::xml_node tbl, Inheritance& inheritance,
                                       const TextContext& context);

}  // namespace render
