#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace deck {

enum class Blank { None, Black, White };

/// Where a show stands, for another one that takes its place.
struct ShowPlace {
  /// Index in the presentation.
  std::int32_t slide = 1;
  /// Gone to by number, and shown though it may be hidden.
  bool isChosen = false;
  /// On the black end slide, behind `slide`.
  bool isAtEnd = false;
  std::size_t builtSteps = 0;
  /// Of the slide's own timing.
  std::int64_t elapsedMilliseconds = 0;
  Blank blank = Blank::None;
};

/// What overrides the settings that the author stored in the deck.
struct SlideShowOptions {
  /// Index in the presentation; may be a hidden slide.
  std::optional<std::int32_t> startSlide;
  /// Goes before startSlide. What it asks for and the deck does not have is left out; a slide out of range is
  /// an error.
  std::optional<ShowPlace> place;
  std::optional<bool> kiosk;
  std::optional<bool> loop;
  std::optional<bool> useTimings;
  /// How long slides without a timing stay, above 0; nothing: until somebody steers.
  std::optional<double> seconds;
  /// Somebody else moves the show: its slides are complete, as nobody clicks, and none goes on by itself.
  bool isPaced = false;
  /// First and last slide, instead of the stored range or custom show.
  std::optional<std::int32_t> firstSlide;
  std::optional<std::int32_t> lastSlide;
};

}  // namespace deck
