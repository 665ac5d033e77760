#include "pictures/MediaInfo.h"

#include "basic/FileBytes.h"

namespace pictures {

MediaInfo readMediaInfo(std::string_view bytes) {
  const basic::FileBytes b(bytes);
  if (b.at(4, 4) == "ftyp") {
    return b.at(8, 3) == "M4A" ? MediaInfo{"audio/mp4", ".m4a"} : MediaInfo{"video/mp4", ".mp4"};
  }
  if (b.big32(0) == 0x1A45DFA3U) return {"video/webm", ".webm"};
  if (b.at(0, 4) == "OggS") return {"video/ogg", ".ogg"};
  if (b.at(0, 4) == "RIFF" && b.at(8, 4) == "WAVE") return {"audio/wav", ".wav"};
  // MPEG audio, with or without its tags before it.
  if (b.at(0, 3) == "ID3" || (b.byte(0) == 0xFF && (b.byte(1) & 0xE6U) == 0xE2U))
    return {"audio/mpeg", ".mp3"};
  return {};
}

}  // namespace pictures
