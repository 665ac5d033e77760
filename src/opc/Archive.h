#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct zip;

namespace opc {

/// A ZIP archive in memory, read through libzip.
class Archive {
 public:
  struct Entry {
    std::string name;
    std::uint64_t size = 0;
    std::uint64_t compressedSize = 0;
  };

  /// What to do to an entry of the archive, or a new entry (index -1).
  struct Change {
    std::int64_t index = -1;
    std::string_view name;
    std::string_view content;
    bool remove = false;
  };

  /// The longest end record of an archive, which is the last of it: 22 bytes and a comment
  /// (APPNOTE.TXT 4.3.16).
  static constexpr std::size_t LongestEnd = 22 + 65535;
  /// Whether the last bytes of a file, LongestEnd of them if it has so many, hold an archive's end.
  [[nodiscard]] static bool hasEnd(std::string_view last);
  /// Why bytes that begin so are no archive that can be read, as the end of a sentence.
  [[nodiscard]] static std::string reasonAgainst(std::string_view beginning, std::string_view detail);

  /// Throws basic::Error with the reason alone; the caller knows the file.
  explicit Archive(std::string bytes);
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
  /// The inflated content, of exactly the size that the directory states, with
  /// its checksum verified.
  [[nodiscard]] std::string read(std::int64_t index) const;

  /// Whether this is the entry's content.
  [[nodiscard]] bool holds(std::int64_t index, std::string_view content) const {
    return entries_[static_cast<std::size_t>(index)].size == content.size() && read(index) == content;
  }

  /// The bytes of the archive with changes made. Entries without a change are
  /// copied as they are; changed ones keep their place and time, new ones come
  /// last and carry the earliest time that ZIP knows.
  [[nodiscard]] std::string with(const std::vector<Change>& changes) const;

 private:
  std::string bytes_;
  ::zip* zip_ = nullptr;
  std::vector<Entry> entries_;
};

}  // namespace opc
