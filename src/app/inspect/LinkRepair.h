#pragma once

#include <string>
#include <vector>

#include "app/inspect/LinkCheck.h"

namespace app {

/// Links that miss the same, and what they could use instead.
struct LinkRepair {
  std::string connection;
  /// Empty when the connection itself is missing.
  std::string column;
  /// How many shapes are linked so.
  int count = 0;
  /// Columns of the connection, or numbers of connections; the likest first.
  std::vector<std::string> choices;

  /// "Column 'Preis' is gone from 001. 4 shapes use it."
  [[nodiscard]] std::string text() const;
  /// What undo calls it: "Use Price for 4 shapes".
  [[nodiscard]] std::string label(const std::string& choice) const;
};

/// Those that would mend findings of checkLinks(), in their order; without any choice there is no repair.
std::vector<LinkRepair> repairsFor(const Findings& findings, const std::vector<CheckedSource>& sources);

/// Leads the links of the deck to the choice.
void repair(deck::Presentation& deck, const LinkRepair& repair, const std::string& choice);

}  // namespace app
