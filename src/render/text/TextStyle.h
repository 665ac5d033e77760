#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "render/paint/PaintReader.h"
#include "render/text/Script.h"

// Formatting of text as it is stated at one place of the cascade: what is unset is
// inherited. Applying the places from the presentation's defaults down to the run
// gives what holds.

namespace render {

enum class Underline : std::uint8_t { None, Single, Double, Heavy, Dotted, Dashed, Wavy };
enum class Strike : std::uint8_t { None, Single, Double };
enum class Caps : std::uint8_t { None, Small, All };

/// Of characters (a:rPr, ECMA-376 part 1, 21.1.2.3.9).
struct RunStyle {
  std::optional<double> size;  // points
  std::optional<bool> bold;
  std::optional<bool> italic;
  std::optional<Underline> underline;
  std::optional<Strike> strike;
  std::optional<Caps> caps;
  std::optional<Fill> fill;
  std::optional<Color> highlight;
  std::optional<Color> underlineColor;
  std::optional<double> baseline;  // share of the size, upwards; -2 to 2
  std::optional<double> spacing;   // px
  /// Typefaces with the theme's names resolved; empty is unset.
  std::string latin;
  std::string eastAsian;
  std::string complexScript;
  std::string symbol;
  std::optional<Line> outline;
  std::optional<Shadow> shadow;
  std::optional<Glow> glow;

  /// What characters of a script are set in; the Latin typeface where the script's own is unset.
  [[nodiscard]] std::string_view typeface(Script script) const;

  /// Takes over what a:rPr, a:defRPr or a:endParaRPr states.
  void apply(pugi::xml_node rPr, const PaintContext& context);
};

enum class Align : std::uint8_t { Left, Center, Right, Justify, Distribute };

/// A length that is either a share of something natural or absolute.
struct Spacing {
  bool isShare = true;
  double value = 1;  // share or px
};

/// Before a paragraph's first line (21.1.2.4).
struct Bullet {
  enum class Kind : std::uint8_t { None, Character, Number, Picture };
  std::optional<Kind> kind;
  std::string character;
  std::string numbering;  // a scheme of ECMA-376 part 1, 20.1.10.61 ("arabicPeriod")
  int startAt = 1;
  /// Holds the picture; null when the file lacks it.
  opc::Part* picture = nullptr;
  /// Unset: as the text.
  std::optional<std::string> typeface;
  std::optional<Color> color;
  std::optional<Spacing> size;
};

struct TabStop {
  double position = 0;  // px
  Align align = Align::Left;
  /// Aligned by the decimal mark, where there is one; `align` is Right.
  bool isDecimal = false;
};

/// Of paragraphs (a:pPr, 21.1.2.2.7). Margins and the indent count from the text's edges.
struct ParagraphStyle {
  std::optional<Align> align;
  std::optional<double> marginLeft;   // px
  std::optional<double> marginRight;  // px
  std::optional<double> indent;       // px, of the first line; negative hangs
  std::optional<bool> rightToLeft;
  std::optional<Spacing> lineSpacing;
  std::optional<Spacing> spaceBefore;
  std::optional<Spacing> spaceAfter;
  std::optional<double> defaultTab;  // px between regular stops
  std::optional<std::vector<TabStop>> tabs;
  Bullet bullet;
  RunStyle run;

  /// Takes over what a:pPr or a:lvl1pPr ... states, its a:defRPr included.
  void apply(pugi::xml_node pPr, const PaintContext& context);
};

/// Nine levels of paragraphs.
struct ListStyle {
  std::array<ParagraphStyle, 9> levels;

  /// Takes over what a:lstStyle and its like state of its levels; a:defPPr counts for nothing, as in
  /// PowerPoint.
  void apply(pugi::xml_node lstStyle, const PaintContext& context);
};

}  // namespace render
