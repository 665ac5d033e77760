#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"

namespace LF2000 {

class clsPresentation;

/// A link that was copied from one shape to be put onto others; one for the whole process.
namespace modLinkClipboard {

using Shapes = std::vector<std::shared_ptr<PowerPoint::Shape>>;

/// Takes up what the shape's tags say; one that is not linked is left alone.
void Copy(const std::shared_ptr<PowerPoint::Shape>& shape);
[[nodiscard]] bool HasLink();

enum class Way : std::uint8_t {
  /// As it is.
  Same,
  /// The same column, one row further on with each shape, as people read them.
  NextRow
};

struct Pasted {
  std::size_t Count = 0;
  /// Why shapes were left out, each a sentence.
  std::vector<std::string> LeftOut;
};
/// Puts the link onto the shapes of a slide that can take it, as one step to undo.
Pasted Paste(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes, Way way);

/// Why there is nothing to paste onto these; empty when there is.
[[nodiscard]] std::string WhyNot(const clsPresentation& presentation, PowerPoint::Slide& slide,
                                 const Shapes& shapes, Way way);

/// Forgets it.
void Reset();

}  // namespace modLinkClipboard
}  // namespace LF2000
