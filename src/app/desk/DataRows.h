#pragma once

#include <cstdint>

#include "connections/clsConnection.h"
#include "json/Json.h"

namespace app {

/// Rows of a connection from the given one on, counted from 1, as shapes show them (docs/desk-protocol.md,
/// GET data). Of one that is not read, or is being filled at this moment, there are none: nothing waits.
[[nodiscard]] json::Json dataRows(LF2000::clsConnection& connection, std::int64_t from, std::int64_t count);

}  // namespace app
