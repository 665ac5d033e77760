#pragma once

#include <string>
#include <string_view>

namespace ppt {

/// UTF-16, the low byte first, as UTF-8. Half a character at the end is left out.
std::string textOfUtf16(std::string_view bytes);

/// Characters below U+0100 by one byte each, as UTF-8.
std::string textOfBytes(std::string_view bytes);

}  // namespace ppt
