#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"
#include "model/modLinkable.h"
#include "model/modPropertyPages.h"

/// What is selected in the window in which the author works, as the pages see it.
namespace LF2000::modSelected {

/// Which page a shape belongs to.
enum class Kind : std::uint8_t { Slide, Field, Clock, Object, Graph, NotLinkable };

struct Selected {
  Kind Page = Kind::Slide;
  /// Null in a presentation without slides.
  std::shared_ptr<PowerPoint::Slide> Slide;
  /// Those that the page is about, as people read them.
  std::vector<std::shared_ptr<PowerPoint::Shape>> Shapes;
  /// All that are selected.
  std::size_t Count = 0;
  /// Why some are left out: "3 of 5 shapes: two hold no text"; empty when none is.
  std::string LeftOut;

  /// The same for the same shapes of the same slide.
  [[nodiscard]] std::string Key() const;
};

/// The largest group of shapes that have a page in common; the slide, where no shape is selected or nothing
/// of the presentation is.
[[nodiscard]] Selected Look(const std::shared_ptr<PowerPoint::Presentation>& presentation);

/// All shapes that are selected, whatever they are.
[[nodiscard]] Selected LookForAll(const std::shared_ptr<PowerPoint::Presentation>& presentation);

/// Those that cannot be linked; no shapes where all can.
[[nodiscard]] Selected LookForNotLinkable(const std::shared_ptr<PowerPoint::Presentation>& presentation);

/// What a page takes that an author has asked for, the rest left out: any text may become a clock.
[[nodiscard]] Selected LookFor(modPropertyPages::Page page,
                               const std::shared_ptr<PowerPoint::Presentation>& presentation);

/// Why a shape of the slide that the names are of cannot be linked, to follow its name; empty when it can.
[[nodiscard]] std::string WhyNot(const modLinkable::NameCounts& names, PowerPoint::Shape& shape);

}  // namespace LF2000::modSelected
