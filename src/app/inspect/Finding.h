#pragma once

#include <string>
#include <vector>

namespace app {

/// Something that a deck's author should know before it goes on screens.
struct Finding {
  enum class Gravity {
    /// Screens show less than they should.
    Broken,
    /// Screens show something else than PowerPoint would.
    Different,
    /// As it is meant to be, and worth knowing.
    Note,
  };

  Gravity gravity = Gravity::Broken;
  /// From 1; 0 for the deck as a whole.
  int slide = 0;
  /// Empty for the slide as a whole.
  std::string shape;
  /// One sentence.
  std::string text;
};

using Findings = std::vector<Finding>;

}  // namespace app
