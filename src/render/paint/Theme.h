#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "render/paint/Color.h"

namespace render {

/// The largest index of a reference to a format scheme; those of backgrounds count from 1001.
inline constexpr int LargestStyleIndex = 2000;

/// Colours, fonts and formats that a deck names instead of stating them (a:themeElements, ECMA-376 part 1,
/// 20.1.6.10). Keeps nodes of the document it was made from, which must outlive it.
class Theme {
 public:
  Theme() = default;
  /// From a:theme or a:themeOverride; for what an override leaves out, `base` stands in.
  explicit Theme(pugi::xml_node theme, const Theme* base = nullptr);

  [[nodiscard]] const ColorScheme& colors() const { return colors_; }
  /// A typeface as written; "+mj-lt", "+mn-ea" and their like name the theme's.
  [[nodiscard]] std::string_view typeface(std::string_view written) const;

  /// Elements of the format scheme by their one-based index in a style reference;
  /// a null node for 0 and for what is not there. Fills from 1001 are the
  /// background's.
  [[nodiscard]] pugi::xml_node fill(int index) const;
  [[nodiscard]] pugi::xml_node line(int index) const;
  [[nodiscard]] pugi::xml_node effect(int index) const;

 private:
  ColorScheme colors_ = {Color::rgb(0x000000), Color::rgb(0xFFFFFF), Color::rgb(0x1F497D),
                         Color::rgb(0xEEECE1), Color::rgb(0x4F81BD), Color::rgb(0xC0504D),
                         Color::rgb(0x9BBB59), Color::rgb(0x8064A2), Color::rgb(0x4BACC6),
                         Color::rgb(0xF79646), Color::rgb(0x0000FF), Color::rgb(0x800080)};
  /// Latin, East Asian, complex script.
  std::string major_[3];
  std::string minor_[3];
  pugi::xml_node formats_;
};

}  // namespace render
