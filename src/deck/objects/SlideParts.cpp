// Which parts of a package are a slide's own, and how they are copied.

#include "deck/objects/SlideParts.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace deck {
namespace {

/// A slide, or what belongs to it, has these for itself.
bool isCopied(const opc::Relationship& relationship) {
  static constexpr std::array<std::string_view, 17> Types{
      "notesSlide",  "chart",           "chartEx",           "package",       "oleObject",      "vmlDrawing",
      "diagramData", "diagramLayout",   "diagramQuickStyle", "diagramColors", "diagramDrawing", "tags",
      "chartStyle",  "chartColorStyle", "chartUserShapes",   "themeOverride", "control"};
  return std::any_of(Types.begin(), Types.end(),
                     [&](std::string_view type) { return relationship.is(type); });
}

/// These lead up, or to another slide.
bool leadsAway(const opc::Relationship& relationship) {
  static constexpr std::array<std::string_view, 7> Types{"slideLayout", "slideMaster",    "slide",    "theme",
                                                         "notesMaster", "officeDocument", "presProps"};
  return std::any_of(Types.begin(), Types.end(),
                     [&](std::string_view type) { return relationship.is(type); });
}

/// A free name of the same kind: "ppt/charts/chart7.xml" for "ppt/charts/chart1.xml".
std::string nameForCopy(opc::Package& package, const std::string& name) {
  const std::size_t folder = name.rfind('/') + 1;
  const std::size_t point = std::min(name.find('.', folder), name.size());
  const std::size_t stem = std::max(name.find_last_not_of("0123456789", point - 1) + 1, folder);
  return package.freeName(name.substr(0, stem), name.substr(point));
}

}  // namespace

opc::Part& copySlidePart(opc::Package& package, opc::Part& slide) {
  std::vector<opc::Part*> originals{&slide};
  std::unordered_map<const opc::Part*, std::string> names{{&slide, nameForCopy(package, slide.name())}};
  for (std::size_t i = 0; i < originals.size(); ++i) {
    for (const opc::Relationship& relationship : originals[i]->relationships()) {
      opc::Part* target = isCopied(relationship) ? originals[i]->target(relationship) : nullptr;
      if (target == nullptr || names.contains(target)) continue;
      names.emplace(target, nameForCopy(package, target->name()));
      originals.push_back(target);
    }
  }
  for (opc::Part* original : originals) {
    package.copy(*original, names[original], [&](const opc::Relationship& relationship) {
      const auto copied = names.find(original->target(relationship));
      return copied == names.end() ? std::string() : copied->second;
    });
  }
  opc::Part& copy = package.part(names[&slide]);
  std::vector<std::string> comments;
  for (const opc::Relationship& relationship : copy.relationships()) {
    if (relationship.is("comments")) comments.push_back(relationship.id);
  }
  for (const std::string& id : comments) package.removeRelationship(copy, id);
  return copy;
}

std::vector<opc::Part*> partsOfSlide(opc::Package& package, opc::Part& slide) {
  std::vector<opc::Part*> reached{&slide};
  std::unordered_set<const opc::Part*> seen{&slide};
  for (std::size_t i = 0; i < reached.size(); ++i) {
    for (const opc::Relationship& relationship : reached[i]->relationships()) {
      opc::Part* target = leadsAway(relationship) ? nullptr : reached[i]->target(relationship);
      if (target != nullptr && seen.insert(target).second) reached.push_back(target);
    }
  }
  // Whoever else refers to a part keeps it, and with it what it refers to.
  std::unordered_set<const opc::Part*> kept;
  const auto keep = [&](opc::Part& referrer) {
    for (const opc::Relationship& relationship : referrer.relationships()) {
      opc::Part* target = referrer.target(relationship);
      if (target != nullptr && target != &slide && seen.contains(target)) kept.insert(target);
    }
  };
  for (opc::Part* part : package.parts()) {
    if (!seen.contains(part)) keep(*part);
  }
  for (std::size_t before = 0; before != kept.size();) {
    before = kept.size();
    for (opc::Part* part : reached) {
      if (kept.contains(part)) keep(*part);
    }
  }
  std::erase_if(reached, [&](const opc::Part* part) { return kept.contains(part); });
  return reached;
}

}  // namespace deck
