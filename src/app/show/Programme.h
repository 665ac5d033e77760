#pragma once

#include <optional>
#include <string>

#include "web/show/Show.h"

namespace app {

/// Decides which deck follows the one on the stage. Called from the loop; nothing here throws.
class Programme {
 public:
  virtual ~Programme() = default;
  /// The show has gone through its slides. True: another deck follows soon, and the slide on show stands
  /// until then. False: the show goes on by itself.
  virtual bool wentThrough() = 0;
  /// Why nobody may move the show from slide to slide; nothing when they may.
  [[nodiscard]] virtual std::optional<std::string> objection() const = 0;
  [[nodiscard]] virtual web::DecksHealth decks() const = 0;
};

}  // namespace app
