#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct zip;
struct zip_file;

// ZIP archives (APPNOTE.TXT) in memory, through libzip. What fails throws basic::Error
// with the reason alone; the caller knows the file. One thread.

namespace opc {

/// The content of one entry, inflated as it is read. The archive outlives it.
class EntryStream {
 public:
  /// Fills the buffer; less than `size` bytes come at the end alone. Throws when the archive is damaged
  /// there; the read that meets the end verifies the checksum.
  std::size_t read(char* to, std::size_t size);

 private:
  friend class Archive;
  struct Close {
    void operator()(zip_file* file) const;
  };
  explicit EntryStream(zip_file* file) : file_(file) {}

  std::unique_ptr<zip_file, Close> file_;
};

/// An archive in memory. Nothing is inflated but what is read.
class Archive {
 public:
  struct Entry {
    std::string name;
    /// As the directory states them.
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
  /// Whether a file, of which these are the last bytes (LongestEnd, if it has so many), holds an archive's
  /// end.
  [[nodiscard]] static bool hasEnd(std::string_view last);

  explicit Archive(std::string bytes);
  ~Archive() = default;
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
  /// The entry of that name, or else one that differs from it in the case of ASCII letters alone.
  [[nodiscard]] std::optional<std::int64_t> find(const std::string& name) const;
  [[nodiscard]] EntryStream open(std::int64_t index) const;
  /// The whole content, of exactly the size that the directory states (which must have been looked
  /// at: it is what memory is taken for).
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
  struct Discard {
    void operator()(::zip* zip) const;
  };

  std::string bytes_;
  std::unique_ptr<::zip, Discard> zip_;
  std::vector<Entry> entries_;
};

}  // namespace opc
