#pragma once

#include "json/Json.h"
#include "model/clsSlide.h"

namespace app {

/// The stored scroll entries of a slide: [{entry, enabled, step, time}].
inline json::Json scrollInfo(const LF2000::clsSlide& properties) {
  json::Json entries = json::Json::array();
  for (const std::int32_t number : properties.ScrollEntryNumbers()) {
    const std::string key = std::to_string(number);
    entries.push_back({{"entry", number},
                       {"enabled", properties.ScrollEnabled(key)},
                       {"step", properties.ScrollStep(key)},
                       {"time", properties.ScrollTime(key)}});
  }
  return entries;
}

}  // namespace app
