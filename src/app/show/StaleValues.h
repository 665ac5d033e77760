#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "app/show/Freshness.h"
#include "app/wiring/LinkedShapes.h"
#include "web/show/Show.h"

namespace app {

/// What screens do with values whose connection has not delivered for a while.
enum class StaleData { Keep, Mark, Blank };

/// "keep", "mark" or "blank"; nothing for anything else.
std::optional<StaleData> staleDataNamed(std::string_view name);

/// The linked shapes whose data are no longer fresh, and what screens do with them.
class StaleValues {
 public:
  /// `form` gives what drives the show; null without one.
  StaleValues(StaleData policy, std::function<LF2000::FrmRuntimeTimer*()> form)
      : policy_(policy), freshness_(std::move(form)) {}

  /// As exact as it is called often. True when screens have something to draw anew.
  bool look();
  /// Adds the elements of a slide's stale shapes to those that are marked, blanked or hidden.
  void addTo(web::ScreenState& state, int slide, const std::vector<LinkedShape>& linked) const;
  [[nodiscard]] const Freshness& freshness() const { return freshness_; }

 private:
  StaleData policy_;
  Freshness freshness_;
};

}  // namespace app
