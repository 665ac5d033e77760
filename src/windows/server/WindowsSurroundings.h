#pragma once

#include <memory>

#include "windows/server/AddIn.h"

namespace windows::server {

/// What this machine and its programs supply: the rooms beside this one, put together.
[[nodiscard]] std::unique_ptr<Surroundings> makeWindowsSurroundings();

}  // namespace windows::server
