#include "pictures/PictureFile.h"

#include <algorithm>
#include <cstddef>
#include <pugixml.hpp>
#include <utility>

#include "host/drives.h"
#include "opc/Failure.h"
#include "opc/Files.h"

namespace pictures {
namespace {

/// Numbers at places of a file; 0 beyond its end.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}
  [[nodiscard]] std::uint32_t byte(std::size_t at) const {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0U;
  }
  [[nodiscard]] std::uint32_t big16(std::size_t at) const { return byte(at) << 8U | byte(at + 1); }
  [[nodiscard]] std::uint32_t big32(std::size_t at) const { return big16(at) << 16U | big16(at + 2); }
  [[nodiscard]] std::uint32_t little16(std::size_t at) const { return byte(at + 1) << 8U | byte(at); }
  [[nodiscard]] std::uint32_t little32(std::size_t at) const {
    return little16(at + 2) << 16U | little16(at);
  }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] std::string_view bytes() const { return bytes_; }

 private:
  std::string_view bytes_;
};

/// What is found at first sight; whether the end is there tells `isWhole`.
struct Found {
  std::string_view contentType;
  std::string_view extension;
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  bool isWhole = false;
};

/// Chunks to the last one, IEND (ISO/IEC 15948, 5.3).
Found png(const Reader& file) {
  Found found{"image/png", ".png", file.big32(16), file.big32(20)};
  for (std::size_t at = 8; at + 12 <= file.size(); at += 12 + std::size_t{file.big32(at)}) {
    if (file.bytes().substr(at + 4, 4) == "IEND") found.isWhole = true;
  }
  return found;
}

/// Segments to the scan, behind which the end of image must come (ITU-T T.81, B.1).
Found jpeg(const Reader& file) {
  Found found{"image/jpeg", ".jpg"};
  for (std::size_t at = 2; at + 4 <= file.size() && file.byte(at) == 0xFF;) {
    const std::uint32_t marker = file.byte(at + 1);
    if (marker == 0xFF) {  // fill byte
      ++at;
      continue;
    }
    const bool isFrame =
        marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (isFrame && found.width == 0) {
      found.height = file.big16(at + 5);
      found.width = file.big16(at + 7);
    }
    at += 2 + std::size_t{file.big16(at + 2)};
    if (marker == 0xDA) {
      found.isWhole = file.bytes().find("\xFF\xD9", at) != std::string_view::npos;
      break;
    }
  }
  return found;
}

/// The trailer is its last byte (GIF89a, 27); some writers pad with zeros.
Found gif(const Reader& file) {
  const std::size_t last = file.bytes().find_last_not_of('\0');
  return {"image/gif", ".gif", file.little16(6), file.little16(8),
          last != std::string_view::npos && file.byte(last) == 0x3B};
}

Found bmp(const Reader& file) {
  const auto height = static_cast<std::int32_t>(file.little32(22));
  return {"image/bmp", ".bmp", file.little32(18), height < 0 ? 0U - file.little32(22) : file.little32(22),
          file.size() > 54 && file.little32(10) < file.size() && file.little32(2) <= file.size()};
}

/// The first directory lies within, and its sizes are told (TIFF 6.0, section 2).
Found tiff(const Reader& file) {
  const bool isLittle = file.byte(0) == 'I';
  const auto number16 = [&](std::size_t at) { return isLittle ? file.little16(at) : file.big16(at); };
  const auto number32 = [&](std::size_t at) { return isLittle ? file.little32(at) : file.big32(at); };
  Found found{"image/tiff", ".tif"};
  const std::size_t directory = number32(4);
  const std::size_t entries = number16(directory);
  found.isWhole = directory >= 8 && entries > 0 && directory + 2 + entries * 12 <= file.size();
  constexpr std::uint32_t Short = 3;
  for (std::size_t i = 0; found.isWhole && i < entries; ++i) {
    const std::size_t at = directory + 2 + i * 12;
    const std::uint32_t value = number16(at + 2) == Short ? number16(at + 8) : number32(at + 8);
    if (number16(at) == 256) found.width = value;
    if (number16(at) == 257) found.height = value;
  }
  return found;
}

/// EMF tells its size in bytes, WMF in words ([MS-EMF] 2.3.4.2, [MS-WMF] 2.3.2.2).
Found emf(const Reader& file) { return {"image/x-emf", ".emf", 0, 0, file.little32(48) <= file.size()}; }
Found wmf(const Reader& file, std::size_t header) {
  return {"image/x-wmf", ".wmf", 0, 0, header + std::uint64_t{file.little32(header + 6)} * 2 <= file.size()};
}

/// Well-formed XML around an svg; its scripts are dead in pictures.
Found svg(const Reader& file) {
  pugi::xml_document document;
  Found found{"image/svg+xml", ".svg"};
  if (!document.load_buffer(file.bytes().data(), file.size(), pugi::parse_minimal)) return found;
  const std::string_view root = document.document_element().name();
  found.isWhole = root.substr(root.find(':') + 1) == "svg";
  return found;
}

Found recognised(const Reader& file) {
  const std::string_view bytes = file.bytes();
  if (bytes.starts_with("\x89PNG\r\n\x1a\n")) return png(file);
  if (bytes.starts_with("\xFF\xD8\xFF")) return jpeg(file);
  if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return gif(file);
  if (bytes.starts_with("BM")) return bmp(file);
  if (bytes.starts_with(std::string_view("II*\0", 4)) || bytes.starts_with(std::string_view("MM\0*", 4))) {
    return tiff(file);
  }
  if (file.little32(0) == 1 && bytes.substr(std::min<std::size_t>(40, bytes.size()), 4) == " EMF") {
    return emf(file);
  }
  if (file.little32(0) == 0x9AC6CDD7) return wmf(file, 22);  // placeable
  if ((file.little16(0) == 1 || file.little16(0) == 2) && file.little16(2) == 9) return wmf(file, 0);
  if (bytes.substr(0, 4096).find("<svg") != std::string_view::npos ||
      bytes.substr(0, 4096).find(":svg") != std::string_view::npos) {
    return svg(file);
  }
  return {};
}

}  // namespace

PictureFile asPicture(std::string bytes, const std::string& name) {
  const auto refuse = [&](const std::string& why) {
    opc::fail(basic::InQuotes(name) + " cannot be shown: " + why);
  };
  const Found found = recognised(Reader(bytes));
  if (found.contentType.empty()) {
    refuse("it holds no picture that is known here (PNG, JPEG, GIF, BMP, TIFF, SVG, EMF, WMF)");
  }
  if (!found.isWhole) refuse("the picture is damaged or not written to its end");
  if (found.width * found.height > MaximumPicturePixels) {
    refuse("it has " + std::to_string(found.width) + " x " + std::to_string(found.height) +
           " pixels; at most " + std::to_string(MaximumPicturePixels / 1'000'000) + " million are shown");
  }
  return {std::move(bytes), found.contentType, found.extension, found.extension == ".svg"};
}

PictureFile readPictureFile(const std::string& path) {
  auto bytes = host::OnDrive(path, [path](const auto& gettingOn) {
    return opc::readFile(path, MaximumPictureBytes, gettingOn).bytes;
  });
  return asPicture(std::move(bytes), path);
}

}  // namespace pictures
