#pragma once

#include <cstdint>
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
  /// Of the shape; 0 where there is none.
  std::uint32_t shapeId = 0;
  /// What a link asks for that is not there: a connection, or a column of one that is there. Empty where the
  /// finding is about something else.
  std::string connection = {};
  std::string column = {};
};

/// "broken", "different" or "note", for programs.
const char* nameOf(Finding::Gravity gravity);

using Findings = std::vector<Finding>;

}  // namespace app
