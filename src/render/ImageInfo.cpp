#include "render/ImageInfo.h"

#include <cstdint>

namespace render {

namespace {

class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  [[nodiscard]] std::uint32_t byte(std::size_t at) const {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0U;
  }
  [[nodiscard]] std::uint32_t big16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
  [[nodiscard]] std::uint32_t big32(std::size_t at) const { return big16(at) << 16 | big16(at + 2); }
  [[nodiscard]] std::uint32_t little16(std::size_t at) const { return byte(at + 1) << 8 | byte(at); }
  [[nodiscard]] std::uint32_t little32(std::size_t at) const { return little16(at + 2) << 16 | little16(at); }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] std::string_view at(std::size_t from, std::size_t length) const {
    return from < bytes_.size() ? bytes_.substr(from, length) : std::string_view();
  }

 private:
  std::string_view bytes_;
};

void setSize(ImageInfo& info, double pixelWidth, double pixelHeight, double dpiX, double dpiY) {
  info.width = pixelWidth * 96 / (dpiX >= 1 ? dpiX : 96);
  info.height = pixelHeight * 96 / (dpiY >= 1 ? dpiY : 96);
}

void readPng(const Bytes& b, ImageInfo& info) {
  double dpiX = 0;
  double dpiY = 0;
  for (std::size_t at = 8; at + 8 <= b.size();) {
    const auto type = b.at(at + 4, 4);
    if (type == "pHYs" && b.byte(at + 16) == 1) {
      dpiX = b.big32(at + 8) * 0.0254;
      dpiY = b.big32(at + 12) * 0.0254;
    }
    if (type == "IDAT" || type == "pHYs") break;
    at += 12 + static_cast<std::size_t>(b.big32(at));
  }
  setSize(info, b.big32(16), b.big32(20), dpiX, dpiY);
}

void readJpeg(const Bytes& b, ImageInfo& info) {
  double dpiX = 0;
  double dpiY = 0;
  for (std::size_t at = 2; at + 4 <= b.size() && b.byte(at) == 0xFF;) {
    const auto marker = b.byte(at + 1);
    if (marker == 0xE0 && b.at(at + 4, 4) == "JFIF") {
      const double unit = b.byte(at + 11) == 1 ? 1 : b.byte(at + 11) == 2 ? 2.54 : 0;
      dpiX = b.big16(at + 12) * unit;
      dpiY = b.big16(at + 14) * unit;
    }
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame) {
      setSize(info, b.big16(at + 7), b.big16(at + 5), dpiX, dpiY);
      return;
    }
    at += 2 + b.big16(at + 2);
  }
}

}  // namespace

ImageInfo readImageInfo(std::string_view bytes) {
  const Bytes b(bytes);
  ImageInfo info;
  const auto is = [&](std::string_view magic) { return bytes.starts_with(magic); };
  if (is("\x89PNG\r\n\x1a\n")) {
    info = {"image/png", ".png"};
    readPng(b, info);
  } else if (is("\xFF\xD8\xFF")) {
    info = {"image/jpeg", ".jpg"};
    readJpeg(b, info);
  } else if (is("GIF8")) {
    info = {"image/gif", ".gif"};
    setSize(info, b.little16(6), b.little16(8), 0, 0);
  } else if (is("BM") && b.size() > 26) {
    info = {"image/bmp", ".bmp"};
    const auto height = static_cast<std::int32_t>(b.little32(22));
    setSize(info, b.little32(18), height < 0 ? -static_cast<double>(height) : height, 0, 0);
  } else if (is("RIFF") && b.at(8, 4) == "WEBP") {
    info = {"image/webp", ".webp"};
  } else if (b.at(0, 512).find("<svg") != std::string_view::npos) {
    info = {"image/svg+xml", ".svg"};
  }
  return info;
}

}  // namespace render
