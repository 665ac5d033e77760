#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "deck/objects/Presentation.h"
#include "host/powerpoint.h"

namespace deck {

/// A window in which an author works on an open deck: which slide is being edited, and what is selected. The
/// slide is held by its place; shapes by their ids, and those that are no longer there are left out.
class DocumentWindow final : public PowerPoint::DocumentWindow,
                             public std::enable_shared_from_this<DocumentWindow> {
 public:
  explicit DocumentWindow(std::shared_ptr<deck::Presentation> presentation)
      : presentation_(std::move(presentation)) {}

  [[nodiscard]] std::shared_ptr<PowerPoint::Presentation> Presentation() override { return presentation_; }
  [[nodiscard]] std::shared_ptr<PowerPoint::Selection> Selection() override;

  /// The slide that is being edited, from 1; 0 in a deck without slides.
  [[nodiscard]] std::int32_t slide() const { return slide_; }
  [[nodiscard]] const std::vector<std::uint32_t>& shapes() const { return shapes_; }
  /// Selects top-level shapes of a slide by their ids, in this order; none selects the slide alone. Ids that
  /// the slide does not have are left out; a slide that is not there is an error. Raises nothing: whoever
  /// calls it tells the application (Application::select).
  void select(std::int32_t slide, std::vector<std::uint32_t> shapes);
  /// Another version of the deck takes the place of the one before.
  void show(std::shared_ptr<deck::Presentation> presentation);

 private:
  std::shared_ptr<deck::Presentation> presentation_;
  std::int32_t slide_ = 1;
  std::vector<std::uint32_t> shapes_;
};

}  // namespace deck
