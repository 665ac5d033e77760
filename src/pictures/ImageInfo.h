#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pictures {

/// What the first bytes of a picture file tell.
struct ImageInfo {
  /// Null when it is no picture that browsers show.
  const char* contentType = nullptr;
  const char* extension = nullptr;
  /// In CSS px at the resolution stated in the file (96 dpi if none); 0 when unknown.
  double width = 0;
  double height = 0;
  /// A metafile or TIFF, which a PictureConverter reads; contentType is null.
  bool isConvertible = false;
};

/// Reads nothing but the header; what it states is not made sure of.
ImageInfo readImageInfo(std::string_view bytes);

/// Films and sounds that browsers may play; contentType is null for others.
ImageInfo readMediaInfo(std::string_view bytes);

/// Metafiles are also kept compressed (RFC 1952). Nothing when that is broken or
/// larger than any picture.
std::optional<std::string> unpacked(std::string_view bytes);
inline bool isPacked(std::string_view bytes) { return bytes.starts_with("\x1F\x8B"); }

}  // namespace pictures
