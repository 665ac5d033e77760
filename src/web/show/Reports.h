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

/// What a screen reports, {"screen":"5f0c…","slide":3,"sequence":17,"held":12}, with "view" and "run" as well
/// when it is at a hub (docs/hubs.md). Numbers are whole and from 0, slides up to a million, at most a minute
/// (in ms) held. Nothing when the text says something else.
std::optional<ScreenReport> parseScreenReport(std::string_view json);

}  // namespace web
