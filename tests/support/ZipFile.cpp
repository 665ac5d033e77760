#include "support/ZipFile.h"

#include <zlib.h>

#include <cstring>
#include <stdexcept>

namespace support {
namespace {

template <typename Integer>
void put(std::string& bytes, Integer value) {
  for (std::size_t i = 0; i < sizeof value; ++i) bytes += static_cast<char>((value >> (8U * i)) & 0xFFU);
}

template <typename Integer>
Integer get(const std::string& bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < sizeof(Integer); ++i) {
    value |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes.at(at + i))) << (8U * i);
  }
  return static_cast<Integer>(value);
}

std::size_t endRecord(const std::string& zip) {
  const std::size_t at = zip.rfind("PK\x05\x06");
  if (at == std::string::npos) throw std::runtime_error("no end of central directory");
  return at;
}

}  // namespace

std::string deflated(const std::string& content, int windowBits) {
  z_stream stream{};
  if (deflateInit2(&stream, 6, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::runtime_error("zlib");
  std::string result(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(result.data());
  stream.avail_out = static_cast<uInt>(result.size());
  deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

std::string zipOf(const std::vector<ZipEntry>& entries, const std::string& comment) {
  std::string zip;
  std::string directory;
  for (const ZipEntry& entry : entries) {
    const std::string data = entry.deflated ? deflated(entry.content) : entry.content;
    std::string common;
    put<std::uint16_t>(common, 20);  // version needed
    put<std::uint16_t>(common, 0);
    put<std::uint16_t>(common, entry.deflated ? 8 : 0);
    put(common, entry.dosTime);
    put(common, entry.dosDate);
    put(common, static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(entry.content.data()),
                                                 static_cast<uInt>(entry.content.size()))));
    put(common, static_cast<std::uint32_t>(data.size()));
    put(common,
        entry.claimedSize != 0 ? entry.claimedSize : static_cast<std::uint32_t>(entry.content.size()));
    put(common, static_cast<std::uint16_t>(entry.name.size()));
    put<std::uint16_t>(common, 0);  // extra field

    directory += "PK\x01\x02";
    put<std::uint16_t>(directory, 20);  // version made by
    directory += common;
    put<std::uint16_t>(directory, 0);  // comment
    put<std::uint16_t>(directory, 0);  // disk
    put<std::uint16_t>(directory, 0);  // internal attributes
    put<std::uint32_t>(directory, 0);  // external attributes
    put(directory, static_cast<std::uint32_t>(zip.size()));
    directory += entry.name;

    zip += "PK\x03\x04" + common + entry.name + data;
  }
  const std::size_t directoryAt = zip.size();
  zip += directory + "PK\x05\x06";
  put<std::uint32_t>(zip, 0);  // disks
  put(zip, static_cast<std::uint16_t>(entries.size()));
  put(zip, static_cast<std::uint16_t>(entries.size()));
  put(zip, static_cast<std::uint32_t>(directory.size()));
  put(zip, static_cast<std::uint32_t>(directoryAt));
  put(zip, static_cast<std::uint16_t>(comment.size()));
  return zip + comment;
}

std::vector<StoredEntry> storedEntries(const std::string& zip) {
  const std::size_t end = endRecord(zip);
  const auto count = get<std::uint16_t>(zip, end + 10);
  std::size_t at = get<std::uint32_t>(zip, end + 16);
  std::vector<StoredEntry> entries;
  for (int i = 0; i < count; ++i) {
    const auto size = get<std::uint32_t>(zip, at + 20);
    const auto nameSize = get<std::uint16_t>(zip, at + 28);
    const auto local = get<std::uint32_t>(zip, at + 42);
    const std::size_t data =
        local + 30U + get<std::uint16_t>(zip, local + 26) + get<std::uint16_t>(zip, local + 28);
    entries.push_back(
        {zip.substr(at + 46, nameSize), get<std::uint32_t>(zip, at + 12), zip.substr(data, size)});
    at += 46U + nameSize + get<std::uint16_t>(zip, at + 30) + get<std::uint16_t>(zip, at + 32);
  }
  return entries;
}

std::vector<std::string> changedEntries(const std::string& before, const std::string& after) {
  const std::vector<StoredEntry> old = storedEntries(before);
  std::vector<std::string> changed;
  std::size_t place = 0;
  for (const StoredEntry& entry : storedEntries(after)) {
    if (place >= old.size() || !(entry == old[place])) changed.push_back(entry.name);
    ++place;
  }
  return changed;
}

std::string compoundFile(const std::string& entry) {
  std::string bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  bytes.resize(1024);
  for (std::size_t i = 0; i < entry.size(); ++i) bytes[512 + 2 * i] = entry[i];
  return bytes;
}

std::string commentOf(const std::string& zip) { return zip.substr(endRecord(zip) + 22); }

}  // namespace support
