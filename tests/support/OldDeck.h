#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ppt/Deck.h"

namespace support {

/// A record of the binary format ([MS-PPT] 2.3.1) that can be changed. A container holds records, an atom
/// bytes.
struct OldRecord {
  std::uint32_t type = 0;
  std::uint32_t instance = 0;
  std::uint32_t version = 0;  // 15 of a container
  std::string atom = {};
  std::vector<OldRecord> records = {};

  static OldRecord parse(std::string_view bytes, std::size_t offset = 0);
  [[nodiscard]] std::string bytes() const;
  /// The first of a type; null for none.
  [[nodiscard]] OldRecord* find(std::uint32_t wanted);
  /// The same, made where the container has none.
  OldRecord& need(std::uint32_t wanted);
};

OldRecord atomOf(std::uint32_t type, const std::string& bytes, std::uint32_t instance = 0);
OldRecord containerOf(std::uint32_t type, std::vector<OldRecord> records, std::uint32_t instance = 0);
/// Numbers of 32 and of 16 bits, the low byte first.
std::string numbers(const std::vector<std::uint32_t>& values);
std::string smallNumbers(const std::vector<int>& values);
/// UTF-8 as UTF-16.
std::string utf16(std::string_view text);
OldRecord tagsRecord(const std::vector<ppt::Tag>& tags);

/// A stream of a compound file.
struct OldStream {
  std::string name;
  std::string bytes;
  /// Empty for the root.
  std::string storage = {};
};
/// A compound file of version 3; short streams are filled up to 4096 bytes, from where on they need no
/// sectors of their own kind.
std::string compoundFile(const std::vector<OldStream>& streams);

/// Writes presentations in the binary format, save by save.
class OldDeckWriter {
 public:
  /// Appends an object, or a later version of it.
  void put(std::uint32_t id, const OldRecord& record);
  /// Appends what every save ends with. Object 1 is the document.
  void save();
  /// Goes on from the stream of a file that was saved once.
  static OldDeckWriter from(std::string stream, std::size_t lastEdit);

  [[nodiscard]] OldRecord get(std::uint32_t id) const;
  [[nodiscard]] std::uint32_t document() const { return document_; }
  [[nodiscard]] std::string stream() const { return stream_; }
  [[nodiscard]] std::string user(std::uint32_t token = 0xE391C05F) const;
  [[nodiscard]] std::string file() const;

 private:
  struct Place {
    std::uint32_t id;
    std::uint32_t offset;
  };
  std::string stream_;
  std::uint32_t lastEdit_ = 0;
  std::uint32_t document_ = 1;
  std::vector<Place> places_;
  std::vector<Place> saved_;
};

/// A presentation with the tags and the shapes' names of `tags` put in by a save of its own, as its author's
/// program would: shapes are meant by their drawing order. Throws std::runtime_error when it has others.
std::string withTags(std::string_view file, const ppt::Deck& tags);

}  // namespace support
