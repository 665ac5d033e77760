#pragma once

#include <memory>

#include "host/office.h"
#include "windows/com/Ptr.h"

namespace windows::automation {

/// The bars of a program of the office suite.
[[nodiscard]] std::shared_ptr<Office::CommandBars> commandBars(com::Ptr<IDispatch> bars);

}  // namespace windows::automation
