#pragma once

#include "windows/strict/Object.h"

namespace loaded {

/// The services in force in this program as the automation object that the door of the module takes. Calls of
/// it do not count as calls of the host, and are not made to fail.
[[nodiscard]] windows::com::Ptr<IDispatch> machineObject();

}  // namespace loaded
