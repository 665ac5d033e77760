#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pictures {

/// A picture as a file holds it.
struct PictureFile {
  std::string bytes;
  std::string_view contentType;
  /// With its dot.
  std::string_view extension;
  /// Drawn from a description ("svg"): presentations keep it beside a picture in pixels.
  bool isSvg = false;
};

/// What a picture file may be: more would take a screen's memory.
inline constexpr std::uint64_t MaximumPictureBytes = 64ULL << 20;
inline constexpr std::uint64_t MaximumPicturePixels = 50'000'000;

/// Reads a whole picture: PNG, JPEG, GIF, BMP, TIFF, SVG, EMF or WMF, by its
/// content, whatever its name says. Throws basic::Error, naming the file, when it
/// cannot be read, is none of these, has more bytes or pixels than the maximum,
/// or ends too early: it may still be on its way. While one on another machine is
/// read, the loop runs (host/drives.h).
PictureFile readPictureFile(const std::string& path);

/// As above, of bytes; `name` is what errors call them.
PictureFile asPicture(std::string bytes, const std::string& name);

}  // namespace pictures
