#pragma once

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <unordered_map>

#include "deck/objects/EditListener.h"
#include "opc/Package.h"

namespace deck {

class Presentation;

/// Where an owner of tags stands in an open deck.
struct OwnerPlace {
  /// From 1; 0 for the presentation.
  std::int32_t slide = 0;
  opc::Part* part = nullptr;
  /// The root element of a presentation or slide, or the shape's.
  pugi::xml_node node;
};

/// The presentation, its slides and their shapes, those in groups as well, by what names them and back. Made
/// once, as slides and shapes neither come nor go in an open deck.
class Owners {
 public:
  explicit Owners(const Presentation& presentation);

  [[nodiscard]] std::optional<OwnerPlace> find(const OwnerId& id) const;
  /// Of an element that has tags; one that is not of a slide is the presentation's.
  [[nodiscard]] OwnerId idOf(pugi::xml_node node) const;

 private:
  void add(OwnerId id, const OwnerPlace& place);

  std::map<OwnerId, OwnerPlace> places_;
  std::unordered_map<const void*, OwnerId> ids_;  // by element
};

}  // namespace deck
