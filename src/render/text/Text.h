#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "render/geometry/Units.h"
#include "render/text/DateField.h"
#include "render/text/TextStyle.h"

// A shape's text with its formatting resolved: what the page's lines are made of.

namespace render {

struct Asset;

/// A stretch of text of one look, or a line break.
struct Run {
  enum class Kind : std::uint8_t { Text, Break };
  Kind kind = Kind::Text;
  std::string text;  // UTF-8, may hold tabs
  RunStyle style;
};

/// A paragraph; one without runs is an empty line in the style of its end.
struct Paragraph {
  ParagraphStyle style;  // its `run` is that of the paragraph's end
  std::vector<Run> runs;
  /// The bullet as it is drawn ("•", "3."); empty without one.
  std::string bullet;
  /// Drawn instead of it; null for none.
  const Asset* bulletPicture = nullptr;

  /// Of the first text, else of the end.
  [[nodiscard]] const RunStyle& firstStyle() const;
  [[nodiscard]] const RunStyle& largestStyle() const;
  [[nodiscard]] const RunStyle& smallestStyle() const;
};

enum class Anchor : std::uint8_t { Top, Center, Bottom };
enum class TextDirection : std::uint8_t { Horizontal, Down, Up, Stacked, EastAsianDown };

/// A presentation's single line is 1.2 times the size of its text whatever the
/// font, a fifth of the size below the baseline. Measured: a font's own metrics
/// do not show in the distance of lines.
inline constexpr double SingleLine = 1.2;
inline constexpr double BelowBaseline = 0.2;
/// Raised and lowered text is smaller by this.
inline constexpr double RaisedSize = 0.66;

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
  double columnGap = 0;      // px
  double fontScale = 1;      // of all sizes, as text was fitted
  double lineReduction = 0;  // share by which spacing was made smaller
  bool shrinks = false;
  /// A warp of ECMA-376 part 1, 20.1.10.76 ("textWave1"); empty for none.
  std::string warp;
  /// The shape was made as large as its text (a:spAutoFit).
  bool fitsShape = false;

  /// Takes over what an a:bodyPr states.
  void apply(pugi::xml_node bodyPr);

  /// Distance of lines as a share of the single one; 1 when it is stated in points.
  [[nodiscard]] double lineShare(const ParagraphStyle& style) const;
  /// px, of a line of text of `size` px.
  [[nodiscard]] double lineHeight(const ParagraphStyle& style, double size) const;
  /// A space between paragraphs in px; shares are of the text's size.
  [[nodiscard]] double gap(const std::optional<Spacing>& spacing, const Paragraph& paragraph) const;
};

/// All text of a shape or cell.
struct TextBody {
  BodyProperties properties;
  std::vector<Paragraph> paragraphs;
  /// By its fields.
  TimeShown timeShown = TimeShown::None;

  /// Whether anything of it would show.
  [[nodiscard]] bool isEmpty() const;
};

}  // namespace render
