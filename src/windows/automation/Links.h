#pragma once

#include <memory>

#include "host/powerpoint.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// What a shape is linked to; raises what the object model says of one that is neither linked nor a picture.
/// An embedded picture shows files by a linked one that lies over it.
[[nodiscard]] std::shared_ptr<PowerPoint::LinkFormat> linkFormat(const com::Object& shape,
                                                                 std::shared_ptr<AuthorsOwn> own,
                                                                 AuthorsOwn::Place place);

}  // namespace windows::automation
