#include <utility>

#include "basic/Percent.h"
#include "opc/ContentTypes.h"
#include "opc/Failure.h"
#include "opc/Package.h"
#include "opc/Relationships.h"
#include "opc/Xml.h"

namespace opc {

Part::Part(Package& package, std::string name, std::int64_t entry)
    : package_(&package), name_(std::move(name)), entry_(entry) {}

Part::~Part() = default;

std::string Part::contentType() const { return package_->contentTypes_->of(name_); }

std::string_view Part::bytes() { return *sharedBytes(); }

std::shared_ptr<const std::string> Part::sharedBytes() {
  if (!bytes_) {
    bytes_ = std::make_shared<const std::string>(xml_ != nullptr && changed_ ? xml::serialize(*xml_)
                                                                             : package_->inflate(*this));
  }
  return bytes_;
}

const pugi::xml_document& Part::xml() {
  if (xml_ != nullptr) return *xml_;
  parsedText_ = bytes_ ? *bytes_ : package_->inflate(*this);
  // The archive has the bytes of an unchanged part; no need to hold them twice.
  if (!changed_) bytes_.reset();
  xml_ = parse(parsedText_);
  return *xml_;
}

void Part::readXml(const std::function<void(const pugi::xml_document&)>& reader) {
  if (xml_ != nullptr) return reader(*xml_);
  std::string text = bytes_ ? *bytes_ : package_->inflate(*this);
  reader(*parse(text));
}

std::unique_ptr<pugi::xml_document> Part::parse(std::string& text) {
  try {
    return xml::parse(text, [this] { return std::string(bytes()); });
  } catch (const basic::Error& error) {
    package_->fail("part " + name_ + " is not well-formed XML: " + error.description);
  }
}

void Part::markChanged() {
  changed_ = true;
  bytes_.reset();
}

Relationships& Part::loadRelationships() {
  if (relationships_ == nullptr) {
    relationships_ = std::make_unique<Relationships>(package_->find(relationshipsPartName(name_)));
  }
  return *relationships_;
}

const std::vector<Relationship>& Part::relationships() { return loadRelationships().all(); }

const Relationship* Part::relationship(std::string_view id) { return loadRelationships().find(id); }

Part* Part::target(std::string_view id) {
  const Relationship* found = relationship(id);
  return found == nullptr ? nullptr : target(*found);
}

Part* Part::target(const Relationship& relationship) {
  if (relationship.external) return nullptr;
  const std::string name = resolveTarget(name_, relationship.target);
  Part* part = package_->find(name);
  if (part == nullptr && name.find('%') != std::string::npos)
    part = package_->find(basic::PercentDecoded(name));
  return part;
}

Part* Part::related(std::string_view typeName) {
  for (const Relationship& relationship : relationships()) {
    if (relationship.is(typeName)) return target(relationship);
  }
  return nullptr;
}

}  // namespace opc
