#pragma once

#include <memory>
#include <pugixml.hpp>

#include "render/Inheritance.h"
#include "render/Scene.h"
#include "render/TextReader.h"

namespace render {

/// An a:tbl with its style resolved. Cells that a merged one covers are left out.
std::shared_ptr<const Table> readTable(pugi::xml_node tbl, Inheritance& inheritance,
                                       const TextContext& context);

}  // namespace render
