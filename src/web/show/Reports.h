#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "web/show/Screens.h"
#include "web/show/Show.h"

namespace web {

class Broadcast;

/// The answer of /api/v1/health; docs/interface.md describes its fields.
std::string healthJson(const Health& health, const Broadcast& broadcast);

/// The answer of /metrics, in Prometheus' text format 0.0.4.
std::string metricsText(const Health& health, const Broadcast& broadcast, std::uint64_t failedRequests);

/// What a screen reports, {"slide":3,"sequence":17,"held":12} with whole numbers from 0, slides up to a
/// million and at most a minute (in ms) held; nothing when the text says something else.
std::optional<PaintReport> parsePaintReport(std::string_view json);

}  // namespace web
