#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/powerpoint.h"
#include "model/clsPresentation.h"
#include "model/modLinkable.h"

namespace LF2000 {

/// What is selected in the window in which the author works, as the commands look at it. Each question is
/// answered once; the object is made anew for each look.
class CommandSelection {
 public:
  /// Finds the entry of an open presentation; null without one.
  using FindEntry =
      std::function<std::shared_ptr<clsPresentation>(const std::shared_ptr<PowerPoint::Presentation>&)>;

  /// Nothing is selected in a host without a window, or in one of a presentation that has no entry.
  CommandSelection(PowerPoint::Application& host, const FindEntry& find);

  /// Null without one.
  [[nodiscard]] const std::shared_ptr<clsPresentation>& Presentation() const { return presentation_; }
  /// The slide that is being edited; null without one.
  [[nodiscard]] const std::shared_ptr<PowerPoint::Slide>& Slide() const { return slide_; }
  [[nodiscard]] const std::vector<std::shared_ptr<PowerPoint::Shape>>& Shapes() const { return shapes_; }

  struct Links {
    /// How many of the shapes are linked, and how many of those show a row of data.
    std::size_t Linked = 0;
    std::size_t WithRow = 0;
    /// The first shape that shows row 1; empty without one.
    std::string FirstRowShape;
  };
  [[nodiscard]] const Links& LinksOfShapes() const;

  /// Why the shapes cannot all be linked as what `takes` answers for, a sentence; empty when they can.
  /// `otherwise` says what is wrong with a shape that can be linked to something else.
  [[nodiscard]] std::string WhyNot(
      const std::function<bool(PowerPoint::Shape&, modLinkable::Shows)>& takes,
      const std::function<std::string(const PowerPoint::Shape&)>& otherwise) const;

 private:
  std::shared_ptr<clsPresentation> presentation_;
  std::shared_ptr<PowerPoint::Slide> slide_;
  std::vector<std::shared_ptr<PowerPoint::Shape>> shapes_;
  mutable std::optional<Links> links_;
  /// For each shape.
  mutable std::vector<modLinkable::Answer> answers_;
};

}  // namespace LF2000
