#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace support {

/// An entry as it goes into an archive, lies included.
struct ZipEntry {
  std::string name;
  std::string content;
  bool deflated = true;
  std::uint16_t dosDate = 0x5A21;  // 1 January 2025
  std::uint16_t dosTime = 0x6000;
  /// What the directory claims; 0 tells the truth.
  std::uint32_t claimedSize = 0;
};

/// As zlib packs it; `windowBits` chooses the wrapping (deflateInit2), none by default.
std::string deflated(const std::string& content, int windowBits = -15);

/// A ZIP archive of exactly these entries, which may be ones that no proper
/// program would write.
std::string zipOf(const std::vector<ZipEntry>& entries, const std::string& comment = {});

/// What the archive stores for its entries, in order: names, times, compressed
/// bytes. Read from the bytes themselves, not by the code under test.
struct StoredEntry {
  std::string name;
  std::uint32_t dosTimeAndDate = 0;
  std::string compressed;

  friend bool operator==(const StoredEntry&, const StoredEntry&) = default;
};
std::vector<StoredEntry> storedEntries(const std::string& zip);
/// The names of the entries of `after` that are others than in their places in `before`, or new.
std::vector<std::string> changedEntries(const std::string& before, const std::string& after);
/// An OLE compound file as far as a look at its directory goes: one entry of this name.
std::string compoundFile(const std::string& entry);
std::string commentOf(const std::string& zip);

}  // namespace support
