// Tags of presentation, slides and shapes: read from their parts, changed in memory, written before a save.

#include "deck/objects/TagStore.h"

#include <algorithm>
#include <array>

#include "basic/Strings.h"
#include "deck/Failure.h"
#include "opc/Relationships.h"
#include "opc/Xml.h"
#include "presentationml/ShapeNode.h"

namespace deck {
namespace {

constexpr std::string_view ContentType =
    "application/vnd.openxmlformats-officedocument.presentationml.tags+xml";
constexpr std::string_view RelationshipType =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/tags";
constexpr std::string_view NoTags =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<p:tagLst xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
    "xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"/>";

/// The element whose child p:custDataLst is.
pugi::xml_node customDataParent(pugi::xml_node owner) {
  if (presentationml::isShape(owner)) return presentationml::applicationProperties(owner);
  return opc::xml::isNamed(owner, "p:sld") ? owner.child("p:cSld") : owner;
}

/// What the schema wants behind a p:custDataLst, in any of its parents.
bool followsCustomData(pugi::xml_node node) {
  static constexpr std::array<std::string_view, 6> Names{
      "p:kinsoku", "p:defaultTextStyle", "p:modifyVerifier", "p:controls", "p:extLst", "mc:AlternateContent"};
  return std::find(Names.begin(), Names.end(), node.name()) != Names.end();
}

pugi::xml_node addCustomData(pugi::xml_node parent) {
  const pugi::xml_node follower = parent.find_child(followsCustomData);
  return follower ? parent.insert_child_before("p:custDataLst", follower)
                  : parent.append_child("p:custDataLst");
}

pugi::xml_node findReference(pugi::xml_node customData, std::string_view relationshipId) {
  return customData.find_child([&](pugi::xml_node node) {
    return opc::xml::isNamed(node, "p:tags") && relationshipId == node.attribute("r:id").value();
  });
}

void removeReference(pugi::xml_node customData, pugi::xml_node reference) {
  customData.remove_child(reference);
  const auto isElement = [](pugi::xml_node node) { return node.type() == pugi::node_element; };
  if (!customData.find_child(isElement)) customData.parent().remove_child(customData);
}

}  // namespace

bool TagList::add(std::string_view name, std::string_view value) {
  const std::string key = basic::UCase(opc::xml::legalText(name));
  std::string legal = opc::xml::legalText(value);
  const auto isIt = [&](const Tag& tag) { return tag.name == key; };
  const auto found = std::find_if(tags_.begin(), tags_.end(), isIt);
  if (found != tags_.end() && found->value == legal) return false;
  beforeChange();
  if (found != tags_.end()) {
    found->value = std::move(legal);
  } else {
    const auto stored = std::find_if(stored_->begin(), stored_->end(), isIt);
    tags_.push_back({key, std::move(legal), stored == stored_->end() ? defaultGroup() : stored->group});
  }
  return true;
}

bool TagList::remove(std::string_view name) {
  const std::string key = basic::UCase(opc::xml::legalText(name));
  const auto isIt = [&](const Tag& tag) { return tag.name == key; };
  if (std::none_of(tags_.begin(), tags_.end(), isIt)) return false;
  beforeChange();
  std::erase_if(tags_, isIt);
  return true;
}

bool TagList::assign(std::vector<Tag> tags) {
  if (tags == tags_) return false;
  beforeChange();
  tags_ = std::move(tags);
  return true;
}

void TagList::beforeChange() {
  if (store_->willChange_) store_->willChange_(*this);
  if (!stored_) stored_ = tags_;
}

/// How many relationships lead to each tag part of a package, and how many
/// elements of a part use a relationship: a copied slide or shape may share a
/// tag part with its original.
class TagStore::Uses {
 public:
  explicit Uses(opc::Package& package) : package_(package) {
    for (opc::Part* part : package.parts()) {
      if (package.find(opc::relationshipsPartName(part->name())) == nullptr) continue;
      for (const opc::Relationship& relationship : part->relationships()) {
        if (relationship.is(opc::relationship::Tags)) ++relationships_[part->target(relationship)];
      }
    }
  }

  bool isShared(opc::Part& source, const TagList::Group& group) {
    return relationships_[group.part] > 1 || elements(source)[group.relationshipId] > 1;
  }

  /// One element of the source less uses the group's relationship.
  void release(opc::Part& source, const TagList::Group& group) {
    if (--elements(source)[group.relationshipId] > 0) return;
    package_.removeRelationship(source, group.relationshipId);
    if (--relationships_[group.part] == 0) package_.remove(*group.part);
  }

 private:
  std::unordered_map<std::string, int>& elements(opc::Part& source) {
    const auto [entry, isNew] = elements_.try_emplace(&source);
    if (isNew) {
      opc::xml::forEachNode(source.xml().document_element(),
                            [&, &counts = entry->second](pugi::xml_node node, int) {
                              if (opc::xml::isNamed(node, "p:tags")) ++counts[node.attribute("r:id").value()];
                              return true;
                            });
    }
    return entry->second;
  }

  opc::Package& package_;
  std::unordered_map<const opc::Part*, int> relationships_;
  std::unordered_map<const opc::Part*, std::unordered_map<std::string, int>> elements_;
};

TagList& TagStore::of(opc::Part& source, pugi::xml_node owner) {
  TagList*& known = byOwner_[owner.internal_object()];
  if (known == nullptr) {
    auto list = std::make_unique<TagList>();
    list->store_ = this;
    list->source_ = &source;
    list->owner_ = owner;
    read(*list);
    known = lists_.emplace_back(std::move(list)).get();
  }
  return *known;
}

void TagStore::read(TagList& list) {
  const pugi::xml_node customData = customDataParent(list.owner_).child("p:custDataLst");
  for (pugi::xml_node reference : customData.children("p:tags")) {
    const std::string id = reference.attribute("r:id").value();
    opc::Part* part = list.source_->target(id);
    if (part == nullptr) {
      fail("The tags of " + list.source_->name() + " in " + basic::InQuotes(package_.name()) +
           " cannot be read: the part of relationship " + basic::InQuotes(id) + " is missing.");
    }
    const std::size_t group = list.groups_.size();
    list.groups_.push_back({group, id, part});
    part->readXml([&](const pugi::xml_document& document) {
      for (pugi::xml_node tag : document.document_element().children("p:tag")) {
        list.tags_.push_back(
            {basic::UCase(tag.attribute("name").value()), tag.attribute("val").value(), group});
      }
    });
  }
}

void TagStore::forget(const opc::Part& source) {
  std::erase_if(byOwner_, [&](const auto& entry) { return entry.second->source_ == &source; });
  std::erase_if(lists_, [&](const auto& list) { return list->source_ == &source; });
}

void TagStore::forget(pugi::xml_node owner) {
  byOwner_.erase(owner.internal_object());
  std::erase_if(lists_, [&](const auto& list) { return list->owner_ == owner; });
}

void TagStore::write() {
  std::optional<Uses> uses;
  for (const auto& list : lists_) {
    if (!list->stored_) continue;
    if (*list->stored_ != list->tags_) {
      if (!uses) uses.emplace(package_);
      write(*list, *uses);
    }
    list->stored_.reset();
  }
}

void TagStore::write(TagList& list, Uses& uses) {
  for (const Tag& tag : list.tags_) addGroup(list, tag.group);
  // From the last, for a group without tags goes away.
  for (std::size_t group = list.groups_.size(); group-- > 0;) {
    const auto ofGroup = [number = list.groups_[group].number](const std::vector<Tag>& tags) {
      std::vector<Tag> chosen;
      std::copy_if(tags.begin(), tags.end(), std::back_inserter(chosen),
                   [number](const Tag& tag) { return tag.group == number; });
      return chosen;
    };
    if (ofGroup(*list.stored_) != ofGroup(list.tags_)) writeGroup(list, group, uses);
  }
}

void TagStore::writeGroup(TagList& list, std::size_t group, Uses& uses) {
  TagList::Group& target = list.groups_[group];
  opc::Part& source = *list.source_;
  const auto isOfGroup = [number = target.number](const Tag& tag) { return tag.group == number; };
  pugi::xml_node customData = customDataParent(list.owner_).child("p:custDataLst");
  pugi::xml_node reference = findReference(customData, target.relationshipId);

  if (std::none_of(list.tags_.begin(), list.tags_.end(), isOfGroup)) {
    uses.release(source, target);
    removeReference(customData, reference);
    source.markChanged();
    list.groups_.erase(list.groups_.begin() + static_cast<std::ptrdiff_t>(group));
    return;
  }
  if (uses.isShared(source, target)) {
    uses.release(source, target);
    opc::Part& copy = package_.add(package_.freeName("ppt/tags/tag", ".xml"), ContentType,
                                   std::string(target.part->bytes()));
    target = {target.number, package_.addRelationship(source, RelationshipType, copy), &copy};
    reference.attribute("r:id") = target.relationshipId.c_str();
    source.markChanged();
  }
  pugi::xml_node root = target.part->xml().document_element();
  while (root.remove_child("p:tag")) {
  }
  for (const Tag& tag : list.tags_) {
    if (!isOfGroup(tag)) continue;
    pugi::xml_node node = root.append_child("p:tag");
    node.append_attribute("name") = tag.name.c_str();
    node.append_attribute("val") = tag.value.c_str();
  }
  target.part->markChanged();
}

void TagStore::addGroup(TagList& list, std::size_t number) {
  const auto next = std::find_if(list.groups_.begin(), list.groups_.end(),
                                 [number](const TagList::Group& group) { return group.number >= number; });
  if (next != list.groups_.end() && next->number == number) return;
  pugi::xml_node parent = customDataParent(list.owner_);
  if (!parent) {
    fail("The shape " + basic::InQuotes(presentationml::shapeName(list.owner_)) + " in " +
         list.source_->name() + " has no place for tags (p:nvPr is missing).");
  }
  opc::Part& part = package_.add(package_.freeName("ppt/tags/tag", ".xml"), ContentType, std::string(NoTags));
  const std::string id = package_.addRelationship(*list.source_, RelationshipType, part);
  pugi::xml_node customData = parent.child("p:custDataLst");
  if (!customData) customData = addCustomData(parent);
  const pugi::xml_node follower =
      next == list.groups_.end() ? pugi::xml_node() : findReference(customData, next->relationshipId);
  pugi::xml_node reference =
      follower ? customData.insert_child_before("p:tags", follower) : customData.append_child("p:tags");
  reference.append_attribute("r:id") = id.c_str();
  list.source_->markChanged();
  list.groups_.insert(next, {number, id, &part});
}

}  // namespace deck
