#pragma once

#include <cstdint>
#include <string_view>

namespace pictures {

enum class ImageKind : std::uint8_t { Unknown, Png, Jpeg, Gif, Bmp, WebP, Svg, Tiff, Emf, Wmf };

/// What the first bytes of a picture file tell.
struct ImageInfo {
  ImageKind kind = ImageKind::Unknown;
  /// Null when the kind is unknown.
  const char* contentType = nullptr;
  /// With its dot.
  const char* extension = nullptr;
  /// 0 of drawings, and when unknown.
  std::uint64_t pixelWidth = 0;
  std::uint64_t pixelHeight = 0;
  /// In CSS px at the resolution stated in the file (96 dpi if none); 0 when unknown.
  double width = 0;
  double height = 0;
  /// A metafile or TIFF, which browsers do not show.
  bool isConvertible = false;
};

/// By the content, whatever the file's name says. Reads nothing but the header; what that states is not
/// made sure of.
ImageInfo readImageInfo(std::string_view bytes);

}  // namespace pictures
