#pragma once

#include <string_view>

namespace render {

/// What the first bytes of a picture file tell.
struct ImageInfo {
  /// Null when it is no picture that browsers show.
  const char* contentType = nullptr;
  const char* extension = nullptr;
  /// In CSS px at the resolution stated in the file (96 dpi if none); 0 when unknown.
  double width = 0;
  double height = 0;
};

ImageInfo readImageInfo(std::string_view bytes);

}  // namespace render
