// Reads compound files: the header, the allocation table, the directory, and streams along their chains.

#include "ppt/CompoundStreams.h"

#include <algorithm>

#include "basic/CompoundFile.h"
#include "basic/FileBytes.h"
#include "basic/Strings.h"
#include "ppt/Failure.h"
#include "ppt/Text.h"

namespace ppt {
namespace {

// [MS-CFB] 2.1 and 2.2.
constexpr std::uint32_t LastSectorNumber = 0xFFFFFFFA;
constexpr std::uint32_t EndOfChain = 0xFFFFFFFE;
constexpr std::size_t HeaderSize = 512;
constexpr std::size_t HeadersTableSectors = 109;
constexpr std::size_t HeadersTable = 76;
// [MS-CFB] 2.6.1.
constexpr std::size_t EntrySize = 128;
constexpr std::size_t LongestName = 64;
constexpr std::uint32_t StorageType = 1;
constexpr std::uint32_t StreamType = 2;

std::vector<std::uint32_t> numbersIn(std::string_view bytes) {
  const basic::FileBytes b(bytes);
  std::vector<std::uint32_t> numbers;
  numbers.reserve(bytes.size() / 4);
  for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) numbers.push_back(b.little32(at));
  return numbers;
}

}  // namespace

CompoundStreams::CompoundStreams(std::string_view bytes) : bytes_(bytes) {
  if (!basic::IsCompoundFile(bytes)) fail("it is no OLE compound file, so no old presentation");
  if (bytes.size() < HeaderSize) failDamaged("its header is cut off");
  readAllocation();
  readDirectory();
  readSmall();
}

void CompoundStreams::readAllocation() {
  const basic::FileBytes b(bytes_);
  const std::uint32_t version = b.little16(26);
  const std::uint32_t shift = b.little16(30);
  if ((version != 3 || shift != 9) && (version != 4 || shift != 12)) {
    failDamaged("its sectors have no size that there is");
  }
  sectors_.bytes = bytes_;
  sectors_.unit = std::size_t{1} << shift;
  sectors_.before = sectors_.unit;
  largestSmall_ = b.little32(56);

  const std::size_t count = bytes_.size() / sectors_.unit;
  const auto sector = [&](std::uint32_t number) {
    if (number >= count) failDamaged("its allocation table leads out of the file");
    return bytes_.substr((std::size_t{number} + 1) * sectors_.unit, sectors_.unit);
  };
  std::vector<std::uint32_t> tables = numbersIn(bytes_.substr(HeadersTable, HeadersTableSectors * 4));
  std::uint32_t more = b.little32(68);
  for (std::size_t i = 0; more < LastSectorNumber; ++i) {
    if (i > count) failDamaged("its allocation table leads in a circle");
    std::vector<std::uint32_t> numbers = numbersIn(sector(more));
    if (numbers.empty()) failDamaged("its allocation table is cut off");
    more = numbers.back();
    numbers.pop_back();
    tables.insert(tables.end(), numbers.begin(), numbers.end());
  }
  for (const std::uint32_t table : tables) {
    if (table >= LastSectorNumber) continue;
    if (sectors_.next.size() > bytes_.size()) failDamaged("its allocation table is larger than the file");
    const std::vector<std::uint32_t> numbers = numbersIn(sector(table));
    sectors_.next.insert(sectors_.next.end(), numbers.begin(), numbers.end());
  }
}

void CompoundStreams::readDirectory() {
  const std::string directory = follow(sectors_, basic::FileBytes(bytes_).little32(48));
  const basic::FileBytes b(directory);
  const bool hasLongSizes = basic::FileBytes(bytes_).little16(26) == 4;
  for (std::size_t at = 0; at + EntrySize <= directory.size(); at += EntrySize) {
    Entry entry;
    const std::size_t length = std::min<std::size_t>(b.little16(at + 64), LongestName);
    entry.name = textOfUtf16(b.at(at, length < 2 ? 0 : length - 2));
    entry.type = b.byte(at + 66);
    entry.left = b.little32(at + 68);
    entry.right = b.little32(at + 72);
    entry.child = b.little32(at + 76);
    entry.start = b.little32(at + 116);
    entry.size = b.little32(at + 120);
    if (hasLongSizes) entry.size |= std::uint64_t{b.little32(at + 124)} << 32U;
    entries_.push_back(std::move(entry));
  }
  if (entries_.empty()) failDamaged("it has no directory");
}

/// The sectors of short streams lie in the stream of the root entry.
void CompoundStreams::readSmall() {
  const basic::FileBytes b(bytes_);
  constexpr std::size_t SmallSector = 64;
  if (b.little32(60) >= LastSectorNumber) return;
  small_.next = numbersIn(follow(sectors_, b.little32(60)));
  smallStream_ = follow(sectors_, entries_.front().start, entries_.front().size);
  small_.bytes = smallStream_;
  small_.unit = SmallSector;
}

std::string CompoundStreams::follow(const Allocation& way, std::uint32_t start,
                                    std::optional<std::uint64_t> size) {
  std::string content;
  if (size && *size == 0) return content;
  std::size_t steps = 0;
  for (std::uint32_t at = start; at != EndOfChain; at = way.next[at]) {
    const std::size_t from = way.before + std::size_t{at} * way.unit;
    if (at >= way.next.size() || from >= way.bytes.size()) failDamaged("a stream leads out of the file");
    if (++steps > way.next.size()) failDamaged("a stream leads in a circle");
    content += way.bytes.substr(from, way.unit);
    if (size && content.size() >= *size) break;
  }
  if (size && content.size() < *size) failDamaged("a stream is cut off");
  if (size) content.resize(static_cast<std::size_t>(*size));
  return content;
}

const CompoundStreams::Entry* CompoundStreams::find(std::string_view name, std::uint32_t tree) const {
  std::vector<std::uint32_t> waiting{tree};
  std::vector<bool> seen(entries_.size());
  while (!waiting.empty()) {
    const std::uint32_t at = waiting.back();
    waiting.pop_back();
    if (at >= entries_.size() || seen[at]) continue;
    seen[at] = true;
    const Entry& entry = entries_[at];
    if (basic::EqualsIgnoreCase(entry.name, name)) return &entry;
    waiting.push_back(entry.left);
    waiting.push_back(entry.right);
  }
  return nullptr;
}

const CompoundStreams::Entry* CompoundStreams::find(std::string_view name, std::string_view storage) const {
  std::uint32_t tree = entries_.front().child;
  if (!storage.empty()) {
    const Entry* folder = find(storage, tree);
    if (folder == nullptr || folder->type != StorageType) return nullptr;
    tree = folder->child;
  }
  return find(name, tree);
}

bool CompoundStreams::has(std::string_view name, std::string_view storage) const {
  return find(name, storage) != nullptr;
}

std::optional<std::string> CompoundStreams::read(std::string_view name, std::string_view storage) const {
  const Entry* entry = find(name, storage);
  if (entry == nullptr || entry->type != StreamType) return std::nullopt;
  if (entry->size > bytes_.size()) failDamaged("a stream is longer than the file");
  return follow(entry->size < largestSmall_ ? small_ : sectors_, entry->start, entry->size);
}

}  // namespace ppt
