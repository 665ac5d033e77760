#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "render/TextStyle.h"
#include "render/Units.h"

// A shape's text with its formatting resolved: what the page's lines are made of.

namespace render {

struct Run {
  enum class Kind : std::uint8_t { Text, Break };
  Kind kind = Kind::Text;
  std::string text;  // UTF-8, may hold tabs
  RunStyle style;
};

struct Paragraph {
  ParagraphStyle style;  // its `run` is that of the paragraph's end
  std::vector<Run> runs;
  /// The bullet as it is drawn ("•", "3."); empty without one.
  std::string bullet;
};

enum class Anchor : std::uint8_t { Top, Center, Bottom };
enum class TextDirection : std::uint8_t { Horizontal, Down, Up, Stacked, EastAsianDown };

/// How text lies in its rectangle (a:bodyPr).
struct BodyProperties {
  double left = 9.6;  // px
  double top = 4.8;
  double right = 9.6;
  double bottom = 4.8;
  Anchor anchor = Anchor::Top;
  bool anchorCenter = false;
  bool wrap = true;
  TextDirection direction = TextDirection::Horizontal;
  double rotation = 0;  // degrees, besides the shape's own
  bool upright = false;
  int columns = 1;
  double columnGap = 0;  // px
  double fontScale = 1;
  double lineReduction = 0;
  bool shrinks = false;

  /// Takes over what an a:bodyPr states.
  void apply(pugi::xml_node bodyPr);
};

struct TextBody {
  BodyProperties properties;
  std::vector<Paragraph> paragraphs;

  /// Whether anything of it would show.
  [[nodiscard]] bool isEmpty() const;
};

}  // namespace render
