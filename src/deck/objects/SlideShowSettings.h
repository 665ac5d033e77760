#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/powerpoint.h"

namespace deck {

class Presentation;

/// How the author set the show up: p:showPr of the presentation's properties
/// (ECMA-376 part 1, 19.2.1.30), read when the object is made.
class SlideShowSettings final : public PowerPoint::SlideShowSettings {
 public:
  explicit SlideShowSettings(Presentation& presentation);

  [[nodiscard]] PowerPoint::SlideShowType ShowType() const override { return type_; }
  /// A kiosk show always loops.
  [[nodiscard]] bool loops() const { return loops_ || type_ == PowerPoint::SlideShowType::Kiosk; }
  [[nodiscard]] bool usesTimings() const { return usesTimings_; }
  /// The slides' indices in the order of the show: all, a range or a custom show.
  [[nodiscard]] const std::vector<std::int32_t>& slides() const { return slides_; }

 private:
  PowerPoint::SlideShowType type_ = PowerPoint::SlideShowType::Speaker;
  bool loops_ = false;
  bool usesTimings_ = true;
  std::vector<std::int32_t> slides_;
};

}  // namespace deck
