#pragma once

#include <string_view>

namespace pictures {

/// What the first bytes of a film or a sound tell.
struct MediaInfo {
  /// Null when it is none that browsers may play.
  const char* contentType = nullptr;
  /// With its dot.
  const char* extension = nullptr;
};

/// Of MP4, WebM, Ogg, WAVE and MPEG audio. Whether a browser really plays it depends on what is inside.
MediaInfo readMediaInfo(std::string_view bytes);

}  // namespace pictures
