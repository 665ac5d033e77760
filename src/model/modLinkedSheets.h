#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"

/// The way from a presentation to what draws the worksheets that are linked into it, where the host does not
/// do that itself.
namespace LF2000::modLinkedSheets {

/// Has linked worksheets show their files as they are now. Answers what could not be drawn; those keep the
/// picture that they have.
using Drawer =
    std::function<std::vector<std::string>(const std::shared_ptr<PowerPoint::Presentation>& presentation)>;

/// Who draws; an empty one ends that.
void DrawnBy(Drawer drawer);

/// Has them drawn for a copy that stands alone, and reports what could not be. Without a drawer nothing is
/// drawn.
void Draw(const std::shared_ptr<PowerPoint::Presentation>& presentation);

}  // namespace LF2000::modLinkedSheets
