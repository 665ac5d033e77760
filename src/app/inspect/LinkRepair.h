#pragma once

#include <string>
#include <vector>

#include "app/inspect/LinkCheck.h"

namespace app {

/// Links that miss the same, and what they could use instead.
struct LinkRepair {
  std::string connection;
  /// What the connection is called; empty when it is missing itself.
  std::string description;
  /// Empty when the connection itself is missing.
  std::string column;
  /// How many shapes are linked so.
  int count = 0;
  /// Columns of the connection, or numbers of connections; the likest first.
  std::vector<std::string> choices;

  /// "Column 'Preis' is gone from connection 001 (Prices). 4 shapes use it."
  [[nodiscard]] std::string text() const;
  /// What undo calls it: "Use Price for 4 shapes".
  [[nodiscard]] std::string label(const std::string& choice) const;
};

/// The columns that a link could use instead of one that is missing, the likest first.
std::vector<std::string> choicesFor(const std::string& column, std::vector<std::string> columns);

/// Those that would mend findings of checkLinks(), in their order; without any choice there is no repair.
std::vector<LinkRepair> repairsFor(const Findings& findings, const std::vector<CheckedSource>& sources);

/// Leads the links of the deck to the choice.
void repair(deck::Presentation& deck, const LinkRepair& repair, const std::string& choice);

}  // namespace app
