#pragma once

#include <memory>

#include "host/powerpoint.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// The object or the chart in a shape; raises what the object model says of one that is neither. Charts of
/// version 12 and later are handed out as Graph's are: their data lie in a workbook, which opens for each
/// filling.
[[nodiscard]] std::shared_ptr<PowerPoint::OLEFormat> oleFormat(const com::Object& shape,
                                                               std::shared_ptr<AuthorsOwn> own,
                                                               AuthorsOwn::Place place);

}  // namespace windows::automation
