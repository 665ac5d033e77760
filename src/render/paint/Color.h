#pragma once

#include <array>
#include <optional>
#include <pugixml.hpp>
#include <string_view>

// Colours of DrawingML (ECMA-376 part 1, 20.1.2.3): six ways to name one and the
// transforms that derive another from it.

namespace render {

/// sRGB components and opacity, each 0 to 1.
struct Color {
  double r = 0;
  double g = 0;
  double b = 0;
  double a = 1;

  static Color rgb(unsigned value);
  bool operator==(const Color&) const = default;
};

/// The twelve colours of a theme.
enum class ThemeColor : unsigned char {
  Dark1,
  Light1,
  Dark2,
  Light2,
  Accent1,
  Accent2,
  Accent3,
  Accent4,
  Accent5,
  Accent6,
  Hyperlink,
  FollowedHyperlink
};
inline constexpr std::size_t ThemeColorCount = 12;
using ColorScheme = std::array<Color, ThemeColorCount>;

/// The theme colour named dk1 ... folHlink.
std::optional<ThemeColor> themeColorNamed(std::string_view name);

/// What bg1, tx1, bg2, tx2 and the rest mean on a slide (p:clrMap).
class ColorMap {
 public:
  ColorMap() = default;
  /// From p:clrMap or a:overrideClrMapping; what is not stated keeps its usual meaning.
  explicit ColorMap(pugi::xml_node clrMap);
  /// The theme colour a mapped or plain name stands for.
  [[nodiscard]] std::optional<ThemeColor> resolve(std::string_view name) const;

 private:
  std::array<ThemeColor, 4> mapped_ = {ThemeColor::Light1, ThemeColor::Dark1, ThemeColor::Light2,
                                       ThemeColor::Dark2};
  std::array<ThemeColor, 8> accents_ = {
      ThemeColor::Accent1, ThemeColor::Accent2, ThemeColor::Accent3,   ThemeColor::Accent4,
      ThemeColor::Accent5, ThemeColor::Accent6, ThemeColor::Hyperlink, ThemeColor::FollowedHyperlink};
};

/// What a colour's name is looked up in.
struct ColorContext {
  const ColorScheme* scheme = nullptr;
  const ColorMap* map = nullptr;
  /// What phClr stands for inside a theme's styles.
  std::optional<Color> placeholder;
};

/// The colour of an element such as a:srgbClr with its transforms; nothing when
/// the element is no colour or names none.
std::optional<Color> readColor(pugi::xml_node colorElement, const ColorContext& context);
/// The same for the first colour among an element's children.
std::optional<Color> readChildColor(pugi::xml_node parent, const ColorContext& context);

/// A preset colour name of ECMA-376 part 1, 20.1.10.47 ("dkBlue"), as 0xRRGGBB.
std::optional<unsigned> presetColor(std::string_view name);

/// Mixes towards white (amount > 0) or black (amount < 0).
Color shaded(const Color& color, double amount);

}  // namespace render
