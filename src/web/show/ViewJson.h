#pragma once

#include "json/Json.h"
#include "web/show/Show.h"

namespace web {

/// What a screen looks at, as health and status tell it.
json::Json viewJson(const View& view);

}  // namespace web
