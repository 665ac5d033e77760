// The headers of picture files: which kind it is, and how large.

#include "pictures/ImageInfo.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "pictures/TiffDirectory.h"

namespace pictures {

namespace {

/// The key of a header before the metafile itself ([MS-WMF] 2.3.2.3).
constexpr std::uint32_t PlaceableWmf = 0x9AC6CDD7U;

/// Of a width and height in some unit of which an inch has so many; without a resolution a px each.
void setSize(ImageInfo& info, double width, double height, double dpiX, double dpiY) {
  info.width = width * 96 / (dpiX >= 1 ? dpiX : 96);
  info.height = height * 96 / (dpiY >= 1 ? dpiY : 96);
}

void setPixels(ImageInfo& info, std::uint32_t width, std::uint32_t height, double dpiX = 0, double dpiY = 0) {
  info.pixelWidth = width;
  info.pixelHeight = height;
  setSize(info, width, height, dpiX, dpiY);
}

/// ISO/IEC 15948, 11.2.2 (IHDR) and 11.3.5.3 (pHYs, pixels per metre).
void readPng(const FileBytes& b, ImageInfo& info) {
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
  setPixels(info, b.big32(16), b.big32(20), dpiX, dpiY);
}

/// Segments to the first frame (ITU-T T.81, B.1 and B.2.2); the resolution stands in JFIF's own.
void readJpeg(const FileBytes& b, ImageInfo& info) {
  double dpiX = 0;
  double dpiY = 0;
  for (std::size_t at = 2; at + 4 <= b.size() && b.byte(at) == 0xFF;) {
    const auto marker = b.byte(at + 1);
    if (marker == 0xFF) {  // fill byte
      ++at;
      continue;
    }
    if (marker == 0xE0 && b.at(at + 4, 4) == "JFIF") {
      const double unit = b.byte(at + 11) == 1 ? 1 : b.byte(at + 11) == 2 ? 2.54 : 0;
      dpiX = b.big16(at + 12) * unit;
      dpiY = b.big16(at + 14) * unit;
    }
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame) return setPixels(info, b.big16(at + 7), b.big16(at + 5), dpiX, dpiY);
    at += 2 + b.big16(at + 2);
  }
}

/// Rows from top to bottom have a height below 0.
void readBmp(const FileBytes& b, ImageInfo& info) {
  const std::uint32_t height = b.little32(22);
  setPixels(info, b.little32(18), static_cast<std::int32_t>(height) < 0 ? 0U - height : height);
}

void readWebp(const FileBytes& b, ImageInfo& info) {
  const auto chunk = b.at(12, 4);
  if (chunk == "VP8 ") {
    setPixels(info, b.little16(26) & 0x3FFFU, b.little16(28) & 0x3FFFU);
  } else if (chunk == "VP8L") {
    const auto bits = b.little32(21);
    setPixels(info, (bits & 0x3FFFU) + 1, (bits >> 14U & 0x3FFFU) + 1);
  } else if (chunk == "VP8X") {
    setPixels(info, (b.little32(24) & 0xFFFFFFU) + 1, (b.little32(27) & 0xFFFFFFU) + 1);
  }
}

/// A length of SVG in px; 0 for shares and what cannot be read.
double svgLength(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || !(value > 0)) return 0;
  const std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
  static constexpr std::pair<std::string_view, double> units[] = {
      {"", 1}, {"px", 1}, {"pt", 96 / 72.0}, {"pc", 16}, {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}};
  for (const auto& [name, px] : units) {
    if (unit == name) return value * px;
  }
  return 0;
}

void readSvg(std::string_view head, ImageInfo& info) {
  const auto attribute = [&](std::string_view name) -> std::string_view {
    for (auto at = head.find(name); at != std::string_view::npos; at = head.find(name, at + 1)) {
      const auto quote = at + name.size() + 1;
      if (quote >= head.size() || head[quote - 1] != '=' || head[at - 1] > ' ') continue;
      return head.substr(quote + 1, head.find(head[quote], quote + 1) - quote - 1);
    }
    return {};
  };
  info.width = svgLength(attribute("width"));
  info.height = svgLength(attribute("height"));
  if (info.width > 0 && info.height > 0) return;
  auto box = attribute("viewBox");
  double numbers[4] = {};
  for (double& number : numbers) {
    box.remove_prefix(std::min(box.find_first_not_of(" ,\t\n\r"), box.size()));
    const auto [end, error] = std::from_chars(box.data(), box.data() + box.size(), number);
    if (error != std::errc()) return;
    box.remove_prefix(static_cast<std::size_t>(end - box.data()));
  }
  setSize(info, std::max(0.0, numbers[2]), std::max(0.0, numbers[3]), 0, 0);
}

/// Enhanced metafiles state their frame in hundredths of millimetres.
void readEmf(const FileBytes& b, ImageInfo& info) {
  const auto side = [&](std::size_t from) {
    const auto length = static_cast<std::int64_t>(static_cast<std::int32_t>(b.little32(from + 8))) -
                        static_cast<std::int32_t>(b.little32(from));
    return std::max(0.0, static_cast<double>(length));
  };
  setSize(info, side(24), side(28), 2540, 2540);
}

/// Windows metafiles may have a header with their place in units of an inch; others
/// say in a record what the window is, in no unit.
void readWmf(const FileBytes& b, ImageInfo& info) {
  const auto difference = [&](std::size_t high, std::size_t low) {
    return std::abs(static_cast<double>(static_cast<std::int16_t>(b.little16(high))) -
                    static_cast<std::int16_t>(b.little16(low)));
  };
  if (b.little32(0) == PlaceableWmf) {
    const double unit = b.little16(14);
    setSize(info, difference(10, 6), difference(12, 8), unit, unit);
    return;
  }
  constexpr std::uint32_t SetWindowExtent = 0x020C;
  constexpr int FirstRecords = 64;
  std::size_t at = 18;
  for (int i = 0; i < FirstRecords && at + 10 <= b.size(); ++i) {
    if (b.little16(at + 4) == SetWindowExtent) {
      const auto extent = [&](std::size_t from) {
        return std::abs(static_cast<double>(static_cast<std::int16_t>(b.little16(from))));
      };
      setSize(info, extent(at + 8), extent(at + 6), 0, 0);
      return;
    }
    at += std::max<std::size_t>(6, static_cast<std::size_t>(b.little32(at)) * 2);
  }
}

void readTiff(const FileBytes& b, ImageInfo& info) {
  constexpr std::uint32_t Width = 256;
  constexpr std::uint32_t Height = 257;
  const TiffDirectory directory(b);
  setPixels(info, directory.value(Width), directory.value(Height));
}

/// Where the root of a drawing may begin, with or without a prefix; none when there is none.
std::size_t svgRoot(std::string_view head) {
  const std::size_t plain = head.find("<svg");
  return plain != std::string_view::npos ? plain : head.find(":svg");
}

}  // namespace

ImageInfo readImageInfo(std::string_view bytes) {
  const FileBytes b(bytes);
  const std::string_view head = b.at(0, 4096);
  ImageInfo info;
  const auto is = [&](std::string_view magic) { return bytes.starts_with(magic); };
  if (is("\x89PNG\r\n\x1a\n")) {
    info = {ImageKind::Png, "image/png", ".png"};
    readPng(b, info);
  } else if (is("\xFF\xD8\xFF")) {
    info = {ImageKind::Jpeg, "image/jpeg", ".jpg"};
    readJpeg(b, info);
  } else if (is("GIF87a") || is("GIF89a")) {
    info = {ImageKind::Gif, "image/gif", ".gif"};
    setPixels(info, b.little16(6), b.little16(8));
  } else if (is("BM")) {
    info = {ImageKind::Bmp, "image/bmp", ".bmp"};
    readBmp(b, info);
  } else if (is("RIFF") && b.at(8, 4) == "WEBP") {
    info = {ImageKind::WebP, "image/webp", ".webp"};
    readWebp(b, info);
  } else if (b.little32(0) == 1 && b.at(40, 4) == " EMF") {
    info = {ImageKind::Emf, "image/x-emf", ".emf"};
    readEmf(b, info);
  } else if (b.little32(0) == PlaceableWmf || b.little32(0) == 0x00090001U || b.little32(0) == 0x00090002U) {
    info = {ImageKind::Wmf, "image/x-wmf", ".wmf"};
    readWmf(b, info);
  } else if (is({"II*\0", 4}) || is({"MM\0*", 4})) {
    info = {ImageKind::Tiff, "image/tiff", ".tif"};
    readTiff(b, info);
  } else if (const auto root = svgRoot(head); root != std::string_view::npos) {
    info = {ImageKind::Svg, "image/svg+xml", ".svg"};
    readSvg(b.at(root, b.at(root, 4096).find('>')), info);
  }
  info.isConvertible =
      info.kind == ImageKind::Emf || info.kind == ImageKind::Wmf || info.kind == ImageKind::Tiff;
  return info;
}

}  // namespace pictures
