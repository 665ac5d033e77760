// Presentations in the binary format, as records, and the compound files that they lie in.

#include "support/OldDeck.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "basic/FileBytes.h"
#include "basic/Utf8.h"
#include "ppt/CompoundStreams.h"
#include "ppt/Records.h"

namespace support {

namespace type = ppt::type;

namespace {

constexpr std::size_t Sector = 512;
constexpr std::uint32_t None = 0xFFFFFFFF;
constexpr std::uint32_t EndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t Container = 0xF;

std::string filledUp(std::string bytes, std::size_t unit) {
  bytes.resize((bytes.size() + unit - 1) / unit * unit);
  return bytes;
}

/// A compound file in the making: sectors, and what follows each.
class Sectors {
 public:
  std::uint32_t add(std::string bytes) {
    const auto first = static_cast<std::uint32_t>(next_.size());
    bytes = filledUp(std::move(bytes), Sector);
    for (std::size_t i = 0; i < bytes.size() / Sector; ++i)
      next_.push_back(first + static_cast<std::uint32_t>(i) + 1);
    next_.back() = EndOfChain;
    content_ += bytes;
    return first;
  }
  std::string file(std::uint32_t directory) {
    constexpr std::uint32_t TableSector = 0xFFFFFFFD;
    constexpr std::size_t PerSector = Sector / 4;
    std::vector<std::uint32_t> tables(109, None);
    std::size_t count = 1;
    while ((next_.size() + count) > count * PerSector) ++count;
    for (std::size_t i = 0; i < count; ++i) {
      tables.at(i) = static_cast<std::uint32_t>(next_.size());
      next_.push_back(TableSector);
    }
    next_.resize(count * PerSector, None);
    std::string header("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
    header.resize(24);
    header += smallNumbers({0x3E, 3, 0xFFFE, 9, 6});
    header.resize(44);
    header += numbers({static_cast<std::uint32_t>(count), directory, 0, 4096, EndOfChain, 0, EndOfChain, 0});
    return header + numbers(tables) + content_ + numbers(next_);
  }

 private:
  std::string content_;
  std::vector<std::uint32_t> next_;
};

struct DirectoryEntry {
  std::string name;
  char kind;  // 1 storage, 2 stream, 5 root
  std::uint32_t right = None;
  std::uint32_t child = None;
  std::uint32_t start = 0;
  std::uint32_t size = 0;

  [[nodiscard]] std::string bytes() const {
    std::string entry = filledUp(utf16(name), 64);
    entry +=
        smallNumbers({static_cast<int>(2 * name.size() + 2)}) + kind + '\1' + numbers({None, right, child});
    entry.resize(116);
    return entry + numbers({start, size, 0});
  }
};

void addTags(OldRecord& container, const std::vector<ppt::Tag>& tags) {
  if (tags.empty()) return;
  OldRecord& list = container.need(type::Tags);
  for (OldRecord& tag : tagsRecord(tags).records) list.records.push_back(std::move(tag));
}

/// Adds the name to the shape's properties ([MS-ODRAW] 2.3.4.1).
void setName(OldRecord& shape, const std::string& name) {
  constexpr std::uint32_t NameProperty = 0x0380;
  constexpr std::uint32_t IsLong = 0x8000;
  OldRecord* properties = shape.find(type::Properties);
  if (name.empty() || properties == nullptr) return;
  const std::string text = utf16(name) + std::string(2, '\0');
  const std::string number = smallNumbers({static_cast<int>(NameProperty | IsLong)}) +
                             numbers({static_cast<std::uint32_t>(text.size())});
  properties->atom.insert(6 * properties->instance, number);
  properties->atom += text;
  ++properties->instance;
}

void tagShapes(OldRecord& group, const std::vector<ppt::Shape>& shapes) {
  std::vector<OldRecord*> drawn;
  for (OldRecord& record : group.records) {
    if (record.type == type::Shape || record.type == type::Group) drawn.push_back(&record);
  }
  if (drawn.size() != shapes.size() + 1) throw std::runtime_error("other shapes than those that bear tags");
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    OldRecord& record = *drawn[i + 1];
    const bool isGroup = record.type == type::Group;
    OldRecord& own = isGroup ? *record.find(type::Shape) : record;
    setName(own, shapes[i].name);
    if (!shapes[i].tags.empty()) addTags(own.need(type::ClientData), shapes[i].tags);
    if (isGroup && !shapes[i].members.empty()) tagShapes(record, shapes[i].members);
  }
}

}  // namespace

OldRecord OldRecord::parse(std::string_view bytes, std::size_t offset) {
  const ppt::Record read = ppt::recordAt(bytes, offset);
  OldRecord record{read.type, read.instance, static_cast<unsigned char>(bytes[offset]) & Container};
  if (!read.isContainer) record.atom = read.body;
  for (std::size_t at = 0; read.isContainer && at < read.body.size();) {
    record.records.push_back(parse(read.body, at));
    at += ppt::RecordHeaderSize + ppt::recordAt(read.body, at).body.size();
  }
  return record;
}

std::string OldRecord::bytes() const {
  std::string body = atom;
  for (const OldRecord& record : records) body += record.bytes();
  return smallNumbers({static_cast<int>(instance << 4U | version), static_cast<int>(type)}) +
         numbers({static_cast<std::uint32_t>(body.size())}) + body;
}

OldRecord* OldRecord::find(std::uint32_t wanted) {
  const auto found = std::find_if(records.begin(), records.end(),
                                  [wanted](const OldRecord& record) { return record.type == wanted; });
  return found == records.end() ? nullptr : &*found;
}

OldRecord& OldRecord::need(std::uint32_t wanted) {
  if (OldRecord* found = find(wanted)) return *found;
  return records.emplace_back(containerOf(wanted, {}));
}

OldRecord atomOf(std::uint32_t type, const std::string& bytes, std::uint32_t instance) {
  return {type, instance, 0, bytes, {}};
}

OldRecord containerOf(std::uint32_t type, std::vector<OldRecord> records, std::uint32_t instance) {
  return {type, instance, Container, {}, std::move(records)};
}

std::string numbers(const std::vector<std::uint32_t>& values) {
  std::string bytes;
  for (const std::uint32_t value : values) {
    for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFFU);
  }
  return bytes;
}

std::string smallNumbers(const std::vector<int>& values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
  }
  return bytes;
}

std::string utf16(std::string_view text) {
  std::string bytes;
  const auto unit = [&bytes](char32_t value) { bytes += smallNumbers({static_cast<int>(value)}); };
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = basic::DecodeUtf8(text, at);
    if (c >= 0x10000) unit(0xD800 + ((c - 0x10000) >> 10U));
    unit(c < 0x10000 ? c : 0xDC00 + (c & 0x3FFU));
  }
  return bytes;
}

OldRecord tagsRecord(const std::vector<ppt::Tag>& tags) {
  OldRecord list = containerOf(type::Tags, {});
  for (const ppt::Tag& tag : tags) {
    list.records.push_back(containerOf(
        type::StringTag, {atomOf(type::String, utf16(tag.name)), atomOf(type::String, utf16(tag.value), 1)}));
  }
  return list;
}

std::string compoundFile(const std::vector<OldStream>& streams) {
  constexpr std::size_t Short = 4096;
  Sectors sectors;
  std::vector<DirectoryEntry> entries{{"Root Entry", 5}};
  // Siblings in the order that searches expect: shorter names first.
  std::map<std::string, std::map<std::pair<std::size_t, std::string>, DirectoryEntry>> storages;
  for (const OldStream& stream : streams) {
    std::string bytes = stream.bytes;
    bytes.resize(std::max(bytes.size(), Short));
    const auto size = static_cast<std::uint32_t>(bytes.size());
    storages[stream.storage][{stream.name.size(), stream.name}] = {stream.name,        2,   None, None,
                                                                   sectors.add(bytes), size};
    if (!stream.storage.empty()) storages[""][{stream.storage.size(), stream.storage}] = {stream.storage, 1};
  }
  const auto addAll = [&](const std::string& storage, std::size_t owner) {
    std::size_t before = 0;
    for (const auto& [key, entry] : storages[storage]) {
      const auto index = static_cast<std::uint32_t>(entries.size());
      (before == 0 ? entries[owner].child : entries[before].right) = index;
      before = index;
      entries.push_back(entry);
    }
  };
  addAll("", 0);
  for (std::size_t i = 1; i < entries.size(); ++i) {
    if (entries[i].kind == 1) addAll(entries[i].name, i);
  }
  entries[0].start = EndOfChain;
  std::string directory;
  for (const DirectoryEntry& entry : entries) directory += entry.bytes();
  const std::uint32_t start = sectors.add(directory);
  return sectors.file(start);
}

void OldDeckWriter::put(std::uint32_t id, const OldRecord& record) {
  places_.push_back({id, static_cast<std::uint32_t>(stream_.size())});
  stream_ += record.bytes();
}

void OldDeckWriter::save() {
  std::string directory;
  for (const Place& place : places_) directory += numbers({1U << 20U | place.id, place.offset});
  const auto at = static_cast<std::uint32_t>(stream_.size());
  stream_ += atomOf(type::PersistDirectory, directory).bytes();
  const auto edit = static_cast<std::uint32_t>(stream_.size());
  stream_ += atomOf(type::UserEdit, numbers({256, 0x03000000, lastEdit_, at, document_, 1000, 1})).bytes();
  lastEdit_ = edit;
  saved_.insert(saved_.end(), places_.begin(), places_.end());
  places_.clear();
}

OldDeckWriter OldDeckWriter::from(std::string stream, std::size_t lastEdit) {
  OldDeckWriter writer;
  const basic::FileBytes edit(ppt::recordAt(stream, lastEdit).body);
  const ppt::Record directory = ppt::recordAt(stream, edit.little32(12));
  for (std::size_t at = 0; at < directory.body.size();) {
    const std::uint32_t run = directory.numbers().little32(at);
    at += 4;
    for (std::uint32_t i = 0; i < run >> 20U; ++i, at += 4) {
      writer.saved_.push_back({(run & 0xFFFFFU) + i, directory.numbers().little32(at)});
    }
  }
  writer.document_ = edit.little32(16);
  writer.lastEdit_ = static_cast<std::uint32_t>(lastEdit);
  writer.stream_ = std::move(stream);
  return writer;
}

OldRecord OldDeckWriter::get(std::uint32_t id) const {
  const auto found =
      std::find_if(saved_.rbegin(), saved_.rend(), [id](const Place& place) { return place.id == id; });
  if (found == saved_.rend()) throw std::runtime_error("no object of that number");
  return OldRecord::parse(stream_, found->offset);
}

std::string OldDeckWriter::user(std::uint32_t token) const {
  return atomOf(type::CurrentUser, numbers({0x14, token, lastEdit_}) + smallNumbers({0, 0x3F4, 3, 0}))
      .bytes();
}

std::string OldDeckWriter::file() const {
  return compoundFile({{"Current User", user()}, {"PowerPoint Document", stream_}});
}

std::string withTags(std::string_view file, const ppt::Deck& tags) {
  const ppt::CompoundStreams streams(file);
  const std::string user = streams.read("Current User").value();
  OldDeckWriter writer = OldDeckWriter::from(streams.read("PowerPoint Document").value(),
                                             ppt::recordAt(user, 0).numbers().little32(8));
  OldRecord document = writer.get(writer.document());
  addTags(document.need(type::DocumentInfoList), tags.tags);
  std::vector<std::uint32_t> ids;
  for (const OldRecord& list : document.records) {
    if (list.type != type::SlideList || list.instance != 0) continue;
    for (const OldRecord& record : list.records) {
      if (record.type == type::SlidePersist) ids.push_back(basic::FileBytes(record.atom).little32(0));
    }
  }
  if (ids.size() != tags.slides.size()) throw std::runtime_error("other slides than those that bear tags");
  writer.put(writer.document(), document);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    OldRecord slide = writer.get(ids[i]);
    OldRecord& drawing = *slide.find(type::Drawing)->find(type::DrawingContent);
    tagShapes(*drawing.find(type::Group), tags.slides[i].shapes);
    addTags(slide, tags.slides[i].tags);
    writer.put(ids[i], slide);
  }
  writer.save();
  std::vector<OldStream> all{{"Current User", writer.user()}, {"PowerPoint Document", writer.stream()}};
  if (auto pictures = streams.read("Pictures")) all.push_back({"Pictures", *pictures});
  return compoundFile(all);
}

}  // namespace support
