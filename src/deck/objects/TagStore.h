#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "opc/Package.h"

namespace deck {

/// One p:tag (ECMA-376 part 1, 19.3.3.2).
struct Tag {
  std::string name;  // upper case
  std::string value;
  std::size_t group = 0;  // which of the owner's tag parts holds it; the number stays while the deck is open

  friend bool operator==(const Tag&, const Tag&) = default;
};

class TagStore;

/// The tags of one owner: a presentation, a slide or a shape.
class TagList {
 public:
  [[nodiscard]] const std::vector<Tag>& all() const { return tags_; }
  /// Replaces the value of a tag of that name in its place, or appends a tag: in the part that holds one of
  /// that name, else in the first.
  /// Answers whether anything changed.
  bool add(std::string_view name, std::string_view value);
  /// Answers whether there was such a tag.
  bool remove(std::string_view name);
  /// Puts another list in place of this one, such as it was before. Answers whether anything changed.
  bool assign(std::vector<Tag> tags);
  /// What new tags are to have as their group.
  [[nodiscard]] std::size_t defaultGroup() const { return groups_.empty() ? 0 : groups_.front().number; }

  /// The root element of a presentation or slide, or the shape's.
  [[nodiscard]] pugi::xml_node owner() const { return owner_; }

 private:
  friend class TagStore;
  /// A p:tags reference of the owner, in the order of their numbers.
  struct Group {
    std::size_t number = 0;
    std::string relationshipId;
    opc::Part* part = nullptr;
  };

  void beforeChange();

  const TagStore* store_ = nullptr;
  opc::Part* source_ = nullptr;
  pugi::xml_node owner_;
  std::vector<Group> groups_;
  std::vector<Tag> tags_;
  std::optional<std::vector<Tag>> stored_;  // as in the package, once changed
};

/// Tags where PowerPoint keeps them: the owner's p:custDataLst refers to a part
/// with a p:tagLst (ECMA-376 part 1, 13.3.12 and 19.3.3). A list is read when
/// first asked for, changed in memory, and put into the package by write(), so
/// that tags that are taken away and added again touch no part.
class TagStore {
 public:
  explicit TagStore(opc::Package& package) : package_(package) {}

  /// The tags of a root element (p:presentation, p:sld) or of a shape in a part.
  /// The list lives as long as the store.
  TagList& of(opc::Part& source, pugi::xml_node owner);

  /// Writes the changed lists into the package.
  void write();
  /// The part goes away: so do the lists of its owners.
  void forget(const opc::Part& source);
  /// The element of the owner goes away; write() comes before.
  void forget(pugi::xml_node owner);

  /// Told of a list before it changes.
  void onChange(std::function<void(const TagList&)> willChange) { willChange_ = std::move(willChange); }

 private:
  friend class TagList;
  class Uses;
  void read(TagList& list);
  void write(TagList& list, Uses& uses);
  void writeGroup(TagList& list, std::size_t group, Uses& uses);
  /// Unless the list has it.
  void addGroup(TagList& list, std::size_t number);

  opc::Package& package_;
  std::vector<std::unique_ptr<TagList>> lists_;        // as they were asked for: new parts are numbered so
  std::unordered_map<const void*, TagList*> byOwner_;  // by element
  std::function<void(const TagList&)> willChange_;
};

}  // namespace deck
