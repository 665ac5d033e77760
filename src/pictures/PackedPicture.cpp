#include "pictures/PackedPicture.h"

#include <zlib.h>

#include <algorithm>

namespace pictures {

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

}  // namespace pictures
