#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "deck/objects/Presentation.h"
#include "deck/show/SlideShowOptions.h"

namespace deck {

/// The course that a show will take when nobody steers it: its slides in their order, how long each one
/// stays, and whether it begins anew. Slides are indices in the presentation.
class ShowCourse {
 public:
  /// Throws basic::Error when there are no slides, or not those of the wanted range.
  ShowCourse(std::shared_ptr<Presentation> presentation, const SlideShowOptions& options);

  /// All, a range or a custom show, hidden slides with them; never empty.
  [[nodiscard]] const std::vector<std::int32_t>& slides() const { return slides_; }
  [[nodiscard]] bool isKiosk() const { return isKiosk_; }
  [[nodiscard]] bool loops() const { return loops_; }
  [[nodiscard]] bool isPaced() const { return isPaced_; }
  /// Milliseconds that the slide stays; nothing: it waits to be steered.
  [[nodiscard]] std::optional<double> stay(std::int32_t slide) const;
  /// The slides that are not hidden now, in their order.
  [[nodiscard]] std::vector<std::int32_t> visible() const;

 private:
  std::shared_ptr<Presentation> presentation_;
  std::vector<std::int32_t> slides_;
  bool isKiosk_ = false;
  bool loops_ = false;
  bool isPaced_ = false;
  bool usesTimings_ = true;
  std::optional<double> seconds_;
};

}  // namespace deck
