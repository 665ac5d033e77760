#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ppt {

/// The streams of an OLE compound file ([MS-CFB]), versions 3 and 4. A file whose chains of sectors
/// lead in circles or out of it is damaged: an error.
class CompoundStreams {
 public:
  /// The bytes outlive it.
  explicit CompoundStreams(std::string_view bytes);

  /// Whether an entry stands in the root, or in a storage of the root, in any case of ASCII letters.
  [[nodiscard]] bool has(std::string_view name, std::string_view storage = {}) const;
  /// A stream's content; nothing when there is none of that name.
  [[nodiscard]] std::optional<std::string> read(std::string_view name, std::string_view storage = {}) const;

 private:
  struct Entry {
    std::string name;
    std::uint32_t type = 0;
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    std::uint32_t child = 0;
    std::uint32_t start = 0;
    std::uint64_t size = 0;
  };
  /// A way from unit to unit: of sectors in the file, or of small ones in the root's stream.
  struct Allocation {
    std::string_view bytes;
    std::size_t unit = 0;
    std::size_t before = 0;  // bytes before the first unit
    std::vector<std::uint32_t> next;
  };

  void readAllocation();
  void readDirectory();
  void readSmall();
  /// The content of a chain; `size` bytes of it, or all.
  [[nodiscard]] static std::string follow(const Allocation& way, std::uint32_t start,
                                          std::optional<std::uint64_t> size = {});
  [[nodiscard]] const Entry* find(std::string_view name, std::uint32_t tree) const;
  [[nodiscard]] const Entry* find(std::string_view name, std::string_view storage) const;

  std::string_view bytes_;
  Allocation sectors_;
  std::string smallStream_;
  Allocation small_;
  std::uint64_t largestSmall_ = 0;
  std::vector<Entry> entries_;
};

}  // namespace ppt
