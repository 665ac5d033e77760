#pragma once

#include <string>
#include <string_view>

namespace platform {

/// A date pattern of Unicode's locale data (UTS #35, part 4, "Date Format Patterns"), in UTF-8, as a picture
/// of basic::Format: "dd.MM.y" is "dd.mm.yyyy". Years have four digits, spaces are plain ones; the era, the
/// time zone, marks of writing direction and what else has no counterpart are left out.
std::string picture(std::string_view pattern);

/// What stands between the first two symbols of a picture; `otherwise` when
/// that is nothing.
std::string separatorOf(std::string_view picture, std::string_view otherwise);

}  // namespace platform
