#include "pictures/ImageInfo.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace pictures {

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

void readWebp(const Bytes& b, ImageInfo& info) {
  const auto chunk = b.at(12, 4);
  if (chunk == "VP8 ") {
    setSize(info, b.little16(26) & 0x3FFFU, b.little16(28) & 0x3FFFU, 0, 0);
  } else if (chunk == "VP8L") {
    const auto bits = b.little32(21);
    setSize(info, (bits & 0x3FFFU) + 1, (bits >> 14U & 0x3FFFU) + 1, 0, 0);
  } else if (chunk == "VP8X") {
    setSize(info, (b.little32(24) & 0xFFFFFFU) + 1, (b.little32(27) & 0xFFFFFFU) + 1, 0, 0);
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
void readEmf(const Bytes& b, ImageInfo& info) {
  const auto side = [&](std::size_t from) {
    const auto length = static_cast<std::int64_t>(static_cast<std::int32_t>(b.little32(from + 8))) -
                        static_cast<std::int32_t>(b.little32(from));
    return std::max(0.0, static_cast<double>(length));
  };
  setSize(info, side(24), side(28), 2540, 2540);
}

/// Windows metafiles may have a header with their place in units of an inch; others
/// say in a record what the window is, in no unit.
void readWmf(const Bytes& b, ImageInfo& info) {
  const auto difference = [&](std::size_t high, std::size_t low) {
    return std::abs(static_cast<double>(static_cast<std::int16_t>(b.little16(high))) -
                    static_cast<std::int16_t>(b.little16(low)));
  };
  if (b.little32(0) == 0x9AC6CDD7U) {
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

void readTiff(const Bytes& b, bool isBig, ImageInfo& info) {
  const auto two = [&](std::size_t at) { return isBig ? b.big16(at) : b.little16(at); };
  const auto four = [&](std::size_t at) { return isBig ? b.big32(at) : b.little32(at); };
  const std::size_t directory = four(4);
  double sides[2] = {};
  for (std::size_t i = 0; i < two(directory); ++i) {
    const auto entry = directory + 2 + i * 12;
    const auto tag = two(entry);
    constexpr std::uint32_t Width = 256;
    constexpr std::uint32_t Height = 257;
    if (tag > Height || entry >= b.size()) break;
    constexpr std::uint32_t Short = 3;
    if (tag >= Width) sides[tag - Width] = two(entry + 2) == Short ? two(entry + 8) : four(entry + 8);
  }
  setSize(info, sides[0], sides[1], 0, 0);
}

}  // namespace

ImageInfo readMediaInfo(std::string_view bytes) {
  const Bytes b(bytes);
  if (b.at(4, 4) == "ftyp") {
    return b.at(8, 3) == "M4A" ? ImageInfo{"audio/mp4", ".m4a"} : ImageInfo{"video/mp4", ".mp4"};
  }
  if (b.big32(0) == 0x1A45DFA3U) return {"video/webm", ".webm"};
  if (b.at(0, 4) == "OggS") return {"video/ogg", ".ogg"};
  if (b.at(0, 4) == "RIFF" && b.at(8, 4) == "WAVE") return {"audio/wav", ".wav"};
  // MPEG audio, with or without its tags before it.
  if (b.at(0, 3) == "ID3" || (b.byte(0) == 0xFF && (b.byte(1) & 0xE6U) == 0xE2U))
    return {"audio/mpeg", ".mp3"};
  return {};
}

std::optional<std::string> unpacked(std::string_view bytes) {
  constexpr std::size_t Largest = 64U << 20U;
  z_stream stream{};
  constexpr int GzipOnly = 16 + MAX_WBITS;
  if (bytes.size() > Largest || inflateInit2(&stream, GzipOnly) != Z_OK) return {};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  std::string out;
  int state = Z_OK;
  while (state == Z_OK && out.size() < Largest) {
    const std::size_t done = out.size();
    out.resize(std::max<std::size_t>(done * 2, 64U << 10U));
    stream.next_out = reinterpret_cast<Bytef*>(out.data() + done);
    stream.avail_out = static_cast<uInt>(out.size() - done);
    state = inflate(&stream, Z_NO_FLUSH);
    out.resize(out.size() - stream.avail_out);
  }
  inflateEnd(&stream);
  if (state != Z_STREAM_END) return {};
  return out;
}

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
    readWebp(b, info);
  } else if (b.little32(0) == 1 && b.at(40, 4) == " EMF") {
    info.isConvertible = true;
    readEmf(b, info);
  } else if (b.little32(0) == 0x9AC6CDD7U || b.little32(0) == 0x00090001U || b.little32(0) == 0x00090002U) {
    info.isConvertible = true;
    readWmf(b, info);
  } else if (is({"II*\0", 4}) || is({"MM\0*", 4})) {
    info.isConvertible = true;
    readTiff(b, bytes.front() == 'M', info);
  } else if (const auto root = b.at(0, 4096).find("<svg"); root != std::string_view::npos) {
    info = {"image/svg+xml", ".svg"};
    readSvg(b.at(root, b.at(root, 4096).find('>')), info);
  }
  return info;
}

}  // namespace pictures
