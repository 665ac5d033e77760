// Whether a picture file is there to its end: one that is copied or drawn by another program may be on its
// way.

#include "pictures/PictureFile.h"

#include <cstddef>
#include <pugixml.hpp>
#include <utility>

#include "basic/Quotes.h"
#include "host/drives.h"
#include "opc/Failure.h"
#include "opc/Files.h"
#include "pictures/ImageInfo.h"
#include "pictures/TiffDirectory.h"

namespace pictures {
namespace {

/// Chunks to the last one, IEND (ISO/IEC 15948, 5.3).
bool isWholePng(const FileBytes& file) {
  for (std::size_t at = 8; at + 12 <= file.size(); at += 12 + std::size_t{file.big32(at)}) {
    if (file.at(at + 4, 4) == "IEND") return true;
  }
  return false;
}

/// Segments to the scan, behind which the end of image must come (ITU-T T.81, B.1).
bool isWholeJpeg(const FileBytes& file) {
  for (std::size_t at = 2; at + 4 <= file.size() && file.byte(at) == 0xFF;) {
    const std::uint32_t marker = file.byte(at + 1);
    if (marker == 0xFF) {  // fill byte
      ++at;
      continue;
    }
    at += 2 + std::size_t{file.big16(at + 2)};
    if (marker == 0xDA) return file.at(at, file.size()).find("\xFF\xD9") != std::string_view::npos;
  }
  return false;
}

/// The trailer is its last byte (GIF89a, 27); some writers pad with zeros.
bool isWholeGif(std::string_view bytes) {
  const std::size_t last = bytes.find_last_not_of('\0');
  return last != std::string_view::npos && bytes[last] == '\x3B';
}

bool isWholeBmp(const FileBytes& file) {
  return file.size() > 54 && file.little32(10) < file.size() && file.little32(2) <= file.size();
}

/// EMF tells its size in bytes, WMF in words behind the header of placeable ones ([MS-EMF] 2.3.4.2, [MS-WMF]
/// 2.3.2.2).
bool isWholeEmf(const FileBytes& file) { return file.little32(48) <= file.size(); }
bool isWholeWmf(const FileBytes& file) {
  const std::size_t header = file.byte(0) == 0xD7 ? 22 : 0;
  return header + std::uint64_t{file.little32(header + 6)} * 2 <= file.size();
}

/// Well-formed XML around an svg; its scripts are dead in pictures.
bool isWholeSvg(std::string_view bytes) {
  pugi::xml_document document;
  if (!document.load_buffer(bytes.data(), bytes.size(), pugi::parse_minimal)) return false;
  const std::string_view root = document.document_element().name();
  return root.substr(root.find(':') + 1) == "svg";
}

bool isWhole(std::string_view bytes, ImageKind kind) {
  const FileBytes file(bytes);
  switch (kind) {
    case ImageKind::Png:
      return isWholePng(file);
    case ImageKind::Jpeg:
      return isWholeJpeg(file);
    case ImageKind::Gif:
      return isWholeGif(bytes);
    case ImageKind::Bmp:
      return isWholeBmp(file);
    case ImageKind::Tiff:
      return TiffDirectory(file).isWithin();
    case ImageKind::Emf:
      return isWholeEmf(file);
    case ImageKind::Wmf:
      return isWholeWmf(file);
    case ImageKind::Svg:
      return isWholeSvg(bytes);
    case ImageKind::WebP:
    case ImageKind::Unknown:
      break;
  }
  return false;
}

}  // namespace

PictureFile asPicture(std::string bytes, const std::string& name) {
  const auto refuse = [&](const std::string& why) {
    opc::fail(basic::InQuotes(name) + " cannot be shown: " + why);
  };
  const ImageInfo info = readImageInfo(bytes);
  // Presentations hold no WebP.
  if (info.kind == ImageKind::Unknown || info.kind == ImageKind::WebP) {
    refuse("it holds no picture that is known here (PNG, JPEG, GIF, BMP, TIFF, SVG, EMF, WMF)");
  }
  if (!isWhole(bytes, info.kind)) refuse("the picture is damaged or not written to its end");
  if (info.pixelWidth * info.pixelHeight > MaximumPicturePixels) {
    refuse("it has " + std::to_string(info.pixelWidth) + " x " + std::to_string(info.pixelHeight) +
           " pixels; at most " + std::to_string(MaximumPicturePixels / 1'000'000) + " million are shown");
  }
  return {std::move(bytes), info.contentType, info.extension, info.kind == ImageKind::Svg};
}

PictureFile readPictureFile(const std::string& path) {
  auto bytes = host::OnDrive(path, [path](const auto& gettingOn) {
    return opc::readFile(path, MaximumPictureBytes, gettingOn).bytes;
  });
  return asPicture(std::move(bytes), path);
}

}  // namespace pictures
