#include "pictures/ImageInfo.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "pictures/PackedPicture.h"
#include "support/ZipFile.h"

namespace pictures::test {
namespace {

std::string bytes(const char (&text)[2], std::size_t count) { return std::string(count, text[0]); }

std::string operator""_b(const char* text, std::size_t size) { return {text, size}; }

TEST(ImageInfo, HeadersTellKindAndSize) {
  const struct {
    const char* what;
    std::string file;
    const char* contentType;
    double width;
    double height;
  } cases[] = {
      {"PNG, 192 dpi",
       "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x60\0\0\0\x30\x08\x06\0\0\0"_b + "CRC " +
           "\0\0\0\x09pHYs\0\0\x1D\x87\0\0\x1D\x87\x01"_b,
       "image/png", 48, 24},
      {"JPEG, 72 dpi",
       "\xFF\xD8\xFF\xE0\0\x10JFIF\0\1\1\1\0\x48\0\x48\0\0\xFF\xC0\0\x11\x08\0\x48\0\x90\x03"_b, "image/jpeg",
       192, 96},
      {"WebP, lossy", "RIFF    WEBPVP8     \0\0\0\x9D\x01\x2A\x40\x01\xF0\0"_b, "image/webp", 320, 240},
      {"WebP, lossless", "RIFF    WEBPVP8L    \x2F\x3F\xC1\x3B\0"_b, "image/webp", 320, 240},
      {"WebP, extended", "RIFF    WEBPVP8X        \x3F\x01\0\xEF\0\0"_b, "image/webp", 320, 240},
      {"SVG with lengths", "<?xml?><!-- --><svg stroke-width='9' width='1in' height=\"48pt\">",
       "image/svg+xml", 96, 64},
      {"JPEG with a fill byte", "\xFF\xD8\xFF\xFF\xC0\0\x11\x08\0\x48\0\x90\x03"_b, "image/jpeg", 144, 72},
      {"SVG of a prefix", "<x:svg xmlns:x='http://www.w3.org/2000/svg' width='9' height='8'>",
       "image/svg+xml", 9, 8},
      {"SVG with its box alone", "<svg width='100%' viewBox='-5, 0 300 150'>", "image/svg+xml", 300, 150},
      {"EMF of 2 by 1 inches",
       "\1\0\0\0"_b + bytes("\0", 20) + "\0\0\0\0\0\0\0\0\xD8\x13\0\0\xEC\x09\0\0 EMF"_b, "image/x-emf", 192,
       96},
      {"placeable WMF of 1 by 0.5 inches", "\xD7\xCD\xC6\x9A\0\0\0\0\0\0\xA0\5\xD0\2\xA0\5"_b, "image/x-wmf",
       96, 48},
      {"WMF that has only a window", "\1\0\x09\0"_b + bytes("\0", 14) + "\5\0\0\0\x0C\2\x0A\0\x14\0"_b,
       "image/x-wmf", 20, 10},
      {"TIFF", "MM\0*\0\0\0\x08\0\2\1\0\0\3\0\0\0\1\0\x20\0\0\1\1\0\4\0\0\0\1\0\0\0\x10"_b, "image/tiff", 32,
       16},
      {"a loop of WMF records without length", "\1\0\x09\0"_b + bytes("\0", 40), "image/x-wmf", 0, 0},
      {"a TIFF whose directory lies beyond its end", "II*\0\xFF\xFF\xFF\x7F"_b, "image/tiff", 0, 0},
      {"text", "no picture", nullptr, 0, 0},
  };
  for (const auto& [what, file, contentType, width, height] : cases) {
    const auto info = readImageInfo(file);
    EXPECT_STREQ(info.contentType, contentType) << what;
    EXPECT_NEAR(info.width, width, 0.05) << what;
    EXPECT_NEAR(info.height, height, 0.05) << what;
    const std::string kind = contentType == nullptr ? "" : contentType;
    EXPECT_EQ(info.isConvertible, kind == "image/tiff" || kind.starts_with("image/x-")) << what;
    // Cut off anywhere, nothing is read beyond the end (for the sanitizers).
    for (std::size_t length = 0; length < file.size(); ++length) readImageInfo(file.substr(0, length));
  }
}

std::string packed(const std::string& content) { return support::deflated(content, 16 + MAX_WBITS); }

TEST(ImageInfo, PackedMetafilesAreUnpackedUpToABound) {
  const auto file = packed("metafile");
  ASSERT_TRUE(isPacked(file));
  EXPECT_EQ(unpacked(file), "metafile");
  EXPECT_EQ(unpacked(file.substr(0, file.size() - 9)), std::nullopt);
  EXPECT_EQ(unpacked(packed(std::string(80U << 20U, 'x'))), std::nullopt) << "a bomb";
}

}  // namespace
}  // namespace pictures::test
