#pragma once

#include <string>
#include <string_view>

namespace platform {

/// A pattern of strftime as a picture of basic::Format: "%d.%m.%Y" is
/// "dd.mm.yyyy". The time zone and what else has no counterpart are left out.
std::string picture(std::string_view pattern);

/// What stands between the first two symbols of a picture; `otherwise` when
/// that is nothing.
std::string separatorOf(std::string_view picture, std::string_view otherwise);

/// A picture of a time without its seconds.
std::string withoutSeconds(std::string picture);

/// The long date that goes with a short one: weekday and month by their names,
/// day, month and year in the same order.
std::string longDateFor(std::string_view shortDate);

}  // namespace platform
