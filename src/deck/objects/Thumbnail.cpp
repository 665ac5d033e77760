#include "deck/objects/Thumbnail.h"

#include <string_view>

namespace deck {

namespace {

constexpr const char* Relationships = "_rels/.rels";

pugi::xml_node relationshipIn(pugi::xml_node relationships) {
  return relationships.find_child([](pugi::xml_node node) {
    return std::string_view(node.attribute("Type").value()).ends_with(opc::relationship::Thumbnail);
  });
}

}  // namespace

ThumbnailAbsence::ThumbnailAbsence(opc::Package& package) : package_(package) {
  opc::Part* thumbnail = package.related(opc::relationship::Thumbnail);
  if (thumbnail == nullptr) return;
  opc::Part& relationships = package.part(Relationships);
  const pugi::xml_node own = relationshipIn(relationships.xml().document_element());
  relationship_.append_copy(own);
  own.parent().remove_child(own);
  relationships.markChanged();
  name_ = thumbnail->name();
  contentType_ = thumbnail->contentType();
  bytes_ = thumbnail->bytes();
  package.remove(*thumbnail);
}

ThumbnailAbsence::~ThumbnailAbsence() {
  if (name_.empty()) return;
  package_.add(name_, contentType_, bytes_);
  opc::Part& relationships = package_.part(Relationships);
  relationships.xml().document_element().append_copy(relationship_.first_child());
  relationships.markChanged();
}

}  // namespace deck
