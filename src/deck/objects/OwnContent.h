#pragma once

#include <optional>
#include <string>

#include "deck/objects/Owners.h"
#include "host/graph.h"

namespace deck {

class Presentation;

/// What a shape holds while no data feed it, kept to be put back after data have stood there: its text, the
/// cells of its table, the data of its chart. Its picture needs no keeping: the deck has the author's own.
class OwnContent {
 public:
  /// What the shape holds now.
  OwnContent(Presentation& presentation, const OwnerPlace& shape);
  /// What bodies() gave, of this or another version of the deck.
  explicit OwnContent(std::string bodies) : bodies_(std::move(bodies)) {}

  /// Puts it back, and the shape's own picture. Texts are left alone where the shape holds another number of
  /// them, as the shape of another version of the deck may, and where bodies() are no XML.
  void putBack(Presentation& presentation, const OwnerPlace& shape) const;

  /// The texts as XML: a "body" for each place that can hold one, with the p:txBody or a:txBody in it.
  [[nodiscard]] const std::string& bodies() const { return bodies_; }
  /// Whether both are known to be the same.
  [[nodiscard]] bool isSame(const OwnContent& other) const {
    return bodies_ == other.bodies_ && !chart_ && !other.chart_;
  }

 private:
  std::string bodies_;
  /// Of a chart that holds other data than its author's.
  std::optional<MSGraph::Table> chart_;
};

}  // namespace deck
