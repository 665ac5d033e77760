#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/powerpoint.h"
#include "model/modSchedule.h"

/// For whom and when a presentation is: the tags of its distribution (docs/tags.md).
namespace LF2000::modDistributionTags {

struct Audience {
  /// Empty: every computer.
  std::vector<std::string> computers;
  modSchedule::Schedule schedule;

  /// Whether it is for the computer of that name, in any case; a list may have it with the back slashes
  /// before it that a browsing dialog gives.
  [[nodiscard]] bool IsFor(std::string_view computer) const;

  friend bool operator==(const Audience&, const Audience&) = default;
};

/// Takes up what one tag says; those of other things are passed over. Raises basic::Error, which names the
/// tag and its value, for a date that is none.
void Take(Audience& audience, std::string_view name, const std::string& value);

/// What the tags say.
[[nodiscard]] Audience Read(const PowerPoint::Tags& tags);

/// Writes it in the place of what is there. A text that is empty is not stored.
void Write(PowerPoint::Tags& tags, const Audience& audience);

}  // namespace LF2000::modDistributionTags
