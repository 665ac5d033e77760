#pragma once

#include <compare>
#include <cstdint>

namespace deck {

/// What has tags: the presentation (0, 0), a slide (its id, 0) or a shape of a slide, by what names it in
/// every version of the deck.
struct OwnerId {
  /// The id of the slide's p:sldId.
  std::uint32_t slide = 0;
  /// The id of the shape's p:cNvPr.
  std::uint32_t shape = 0;
  /// Ids should not repeat, and do: 0 for the first of the id, in drawing order. A shape without an id has 0
  /// for it and is a twin of its slide.
  std::uint32_t twin = 0;

  [[nodiscard]] bool isPresentation() const { return slide == 0; }
  [[nodiscard]] bool isShape() const { return shape != 0 || twin != 0; }
  [[nodiscard]] bool isSlide() const { return slide != 0 && !isShape(); }
  friend auto operator<=>(const OwnerId&, const OwnerId&) = default;
};

/// Hears of what an author edits, before it changes: the old tags, name and content can still be read then,
/// and are to be read then. What stays as it is may be told as well. Handlers neither throw nor change tags.
class EditListener {
 public:
  virtual ~EditListener() = default;
  virtual void tagsWillChange(const OwnerId& owner) = 0;
  /// Of a shape.
  virtual void nameWillChange(const OwnerId& owner) = 0;
  /// The file has the present state.
  virtual void saved() {}
};

}  // namespace deck
