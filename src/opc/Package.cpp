// The parts of a package: refused where they would harm, inflated when asked for, packed with what has
// changed.

#include "opc/Package.h"

#include <algorithm>

#include "basic/Strings.h"
#include "opc/Archive.h"
#include "opc/ContentTypes.h"
#include "opc/Failure.h"
#include "opc/OldFormats.h"
#include "opc/PackageFile.h"
#include "opc/Relationships.h"

namespace opc {
namespace {

constexpr std::string_view ContentTypesName = "[Content_Types].xml";
constexpr std::string_view RelationshipsType = "application/vnd.openxmlformats-package.relationships+xml";
constexpr std::string_view NoRelationships =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string megabytes(std::uint64_t bytes) { return std::to_string(bytes >> 20U) + " MB"; }

/// Whether a path in the archive could name something outside of it.
bool leadsOutside(std::string_view name) {
  if (name.starts_with('/') || name.starts_with('\\') || (name.size() > 1 && name[1] == ':')) return true;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find_first_of("/\\", begin), name.size());
    if (name.substr(begin, end - begin) == "..") return true;
    begin = end + 1;
  }
  return false;
}

}  // namespace

std::size_t Package::NameHash::operator()(std::string_view name) const {
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (char c : name) hash = (hash ^ static_cast<unsigned char>(upper(c))) * 1099511628211ULL;
  return hash;
}

bool Package::NameEqual::operator()(std::string_view a, std::string_view b) const {
  return basic::EqualsIgnoreCase(a, b);
}

std::unique_ptr<Package> Package::open(const std::string& path, const Limits& limits) {
  return fromBytes(readPackageFile(path).bytes, path, limits);
}

std::unique_ptr<Package> Package::fromBytes(std::string bytes, std::string name, const Limits& limits) {
  return std::unique_ptr<Package>(new Package(std::move(bytes), std::move(name), limits));
}

Package::Package(std::string bytes, std::string name, const Limits& limits)
    : name_(std::move(name)), root_(new Part(*this, {}, -1)) {
  if (bytes.empty()) fail("the file is empty");
  if (const std::string old = describeOldFormat(bytes); !old.empty()) fail(old);
  const std::string beginning = bytes.substr(0, 4);
  try {
    archive_ = std::make_unique<Archive>(std::move(bytes));
  } catch (const basic::Error& error) {
    fail(describeNoPackage(beginning, error.description));
  }
  readDirectory(limits);
  contentTypes_ = std::make_unique<ContentTypes>(part(ContentTypesName));
}

Package::~Package() = default;

void Package::fail(const std::string& what) const {
  opc::fail(basic::InQuotes(name_) + " cannot be read: " + what);
}

void Package::readDirectory(const Limits& limits) {
  const std::vector<Archive::Entry>& entries = archive_->entries();
  parts_.reserve(entries.size());
  byName_.reserve(entries.size());
  const auto isBomb = [&](std::uint64_t size, std::uint64_t compressed) {
    return size > limits.ratioFrom && size / limits.ratio > compressed;
  };
  const auto failAsBomb = [&](const std::string& what) {
    fail(what + " would inflate to more than " + std::to_string(limits.ratio) +
         " times its size, which no honest file does");
  };
  std::uint64_t total = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const Archive::Entry& entry = entries[i];
    if (leadsOutside(entry.name))
      fail("entry " + basic::InQuotes(entry.name) + " has a path that leads out of the archive");
    if (entry.size > limits.partBytes) {
      fail("part " + entry.name + " would inflate to " + megabytes(entry.size) + ", more than the " +
           megabytes(limits.partBytes) + " allowed");
    }
    if (isBomb(entry.size, entry.compressedSize)) failAsBomb("part " + entry.name);
    total += entry.size;
    if (total > limits.totalBytes) {
      fail("its parts would inflate to more than the " + megabytes(limits.totalBytes) + " allowed");
    }
    if (entry.name.empty() || entry.name.ends_with('/')) continue;
    if (byName_.contains(entry.name)) fail("it holds two entries of the name " + basic::InQuotes(entry.name));
    insert(entry.name, static_cast<std::int64_t>(i));
  }
  if (isBomb(total, archive_->bytes().size())) failAsBomb("it");
}

Part& Package::insert(std::string name, std::int64_t entry) {
  parts_.push_back(std::unique_ptr<Part>(new Part(*this, std::move(name), entry)));
  Part& part = *parts_.back();
  byName_.emplace(part.name(), &part);
  return part;
}

std::string Package::inflate(const Part& part) const {
  try {
    return archive_->read(part.entry_);
  } catch (const basic::Error& error) {
    fail(error.description);
  }
}

std::size_t Package::fingerprint() const { return std::hash<std::string>{}(archive_->bytes()); }

void Package::verify() const {
  for (const auto& part : parts_) {
    if (part->entry_ >= 0) static_cast<void>(inflate(*part));
  }
}

Part* Package::find(std::string_view name) const {
  if (name.starts_with('/')) name.remove_prefix(1);
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

Part& Package::part(std::string_view name) const {
  Part* found = find(name);
  if (found == nullptr) fail("part " + std::string(name) + " is missing");
  return *found;
}

std::vector<Part*> Package::parts() const {
  std::vector<Part*> all;
  all.reserve(parts_.size());
  for (const auto& part : parts_) {
    if (!part->removed_) all.push_back(part.get());
  }
  return all;
}

Part* Package::related(std::string_view typeName) { return root_->related(typeName); }

Part& Package::add(std::string name, std::string_view contentType, std::string bytes) {
  if (find(name) != nullptr) opc::fail(basic::InQuotes(name_) + " already has a part " + name);
  Part& part = insert(std::move(name), -1);
  setBytes(part, std::move(bytes));
  contentTypes_->set(part.name(), contentType);
  return part;
}

Part& Package::copy(Part& source, const std::string& name,
                    const std::function<std::string(const Relationship&)>& targetOf) {
  Part& made = add(name, source.contentType(), std::string(source.bytes()));
  Part* stored = find(relationshipsPartName(source.name()));
  if (stored == nullptr) return made;
  Part& relationships = add(relationshipsPartName(name), RelationshipsType, std::string(stored->bytes()));
  for (pugi::xml_node node : relationships.xml().document_element().children("Relationship")) {
    const Relationship relationship = relationshipOf(node);
    if (relationship.external) continue;
    const std::string target = targetOf(relationship);
    if (!target.empty()) node.attribute("Target") = relativeTarget(name, target).c_str();
  }
  relationships.markChanged();
  return made;
}

void Package::setBytes(Part& part, std::string bytes) {
  part.xml_.reset();
  part.relationships_.reset();
  part.bytes_ = std::make_shared<const std::string>(std::move(bytes));
  part.changed_ = true;
  part.version_ = ++lastVersion_;
}

void Package::remove(Part& part) {
  if (Part* stored = find(relationshipsPartName(part.name()))) remove(*stored);
  contentTypes_->forget(part.name());
  byName_.erase(part.name());
  part.removed_ = true;
  // What was never saved leaves nothing behind.
  if (part.entry_ < 0) std::erase_if(parts_, [&](const auto& one) { return one.get() == &part; });
}

std::string Package::freeName(std::string_view stem, std::string_view extension) {
  int& last = lastNumber_[std::string(stem)];
  std::string name;
  do {
    name = std::string(stem) + std::to_string(++last) + std::string(extension);
  } while (find(name) != nullptr);
  return name;
}

Part& Package::relationshipsPartOf(Part& source) {
  const std::string name = relationshipsPartName(source.name());
  if (Part* stored = find(name)) return *stored;
  return add(name, RelationshipsType, std::string(NoRelationships));
}

std::string Package::addRelationship(Part& source, std::string_view type, const Part& target) {
  if (!source.loadRelationships().isStored()) {
    source.relationships_ = std::make_unique<Relationships>(&relationshipsPartOf(source));
  }
  return source.relationships_->add(type, relativeTarget(source.name(), target.name()));
}

void Package::removeRelationship(Part& source, std::string_view id) { source.loadRelationships().remove(id); }

std::string Package::serialize() {
  std::vector<Archive::Change> changes;
  // A removed part may have a successor of the same name, so removals come first.
  for (const auto& part : parts_) {
    if (part->removed_ && part->entry_ >= 0) changes.push_back({part->entry_, part->name(), {}, true});
  }
  for (const auto& part : parts_) {
    if (!part->changed_ || part->removed_) continue;
    // What came back to what it was stays compressed as it was.
    if (part->entry_ >= 0 && archive_->holds(part->entry_, part->bytes())) continue;
    changes.push_back({part->entry_, part->name(), part->bytes(), false});
  }
  try {
    return archive_->with(changes);
  } catch (const basic::Error& error) {
    opc::fail(basic::InQuotes(name_) + " cannot be packed: " + error.description);
  }
}

void Package::rebase(std::string bytes) {
  archive_ = std::make_unique<Archive>(std::move(bytes));
  const std::vector<Archive::Entry>& entries = archive_->entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (Part* part = find(entries[i].name)) {
      part->entry_ = static_cast<std::int64_t>(i);
      part->changed_ = false;
      if (part->xml_ != nullptr) part->bytes_.reset();
    }
  }
  std::erase_if(parts_, [](const auto& part) { return part->removed_; });
}

}  // namespace opc
