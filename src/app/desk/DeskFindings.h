#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/desk/OpenDeck.h"
#include "app/inspect/LinkRepair.h"
#include "deck/objects/Application.h"
#include "json/Json.h"

namespace app {

/// What a check of the links found when it was asked for last, by what is known of the connections; and how
/// it is mended.
class DeskFindings {
 public:
  void check(OpenDeck& open);
  /// Leads the links that miss the same to the choice, as one step that can be undone, and checks again.
  void repair(deck::Application& application, OpenDeck& open, int number, const std::string& choice);
  /// The same for links that were found otherwise.
  void mend(deck::Application& application, OpenDeck& open, const LinkRepair& repair,
            const std::string& choice);
  /// docs/desk-protocol.md, findings; null before the first check.
  [[nodiscard]] json::Json toJson(const DeskSlides& slides) const;

 private:
  std::optional<Findings> findings_;
  std::vector<LinkRepair> repairs_;
};

}  // namespace app
