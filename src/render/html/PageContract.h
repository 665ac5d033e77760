#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The names in a slide's HTML by which others find its parts: slideStyles(), the scripts and style sheets of
// screens, the check of texts that do not fit. A change of one is a change of all of them. Element names and
// attributes that no one looks for are not listed.

namespace render::page {

// Classes.

/// The section that is a slide, whole and at its natural size; its id is slideElement(). The styles of all
/// that follows hold inside of it.
inline constexpr std::string_view Slide = "slide";
/// What layout and master show behind the slide's own shapes.
inline constexpr std::string_view Behind = "behind";
/// A shape or a part of one, placed and turned. The ids of top-level shapes are shapeElement(); they are
/// replaced one by one when they change.
inline constexpr std::string_view Shape = "s";
/// Besides, a top-level shape whose text changes while it is shown.
inline constexpr std::string_view Live = "live";
/// A shape's block of text, a child of Shape. Laid out Fineness times larger than it is shown; the style
/// sheet says how many as --fineness.
inline constexpr std::string_view Text = "t";
/// A part of Text whose lines end at line breaks alone, however wide they are.
inline constexpr std::string_view Unwrapped = "n";
/// A film or sound.
inline constexpr std::string_view Media = "m";
/// A bullet, and what keeps it and the first word together.
inline constexpr std::string_view Bullet = "b";
inline constexpr std::string_view BulletWord = "k";
/// Text up to where a tab leads; text that ends there, text centred there.
inline constexpr std::string_view Tab = "tab";
inline constexpr std::string_view TabRight = "tr";
inline constexpr std::string_view TabCentre = "tc";

// Elements and attributes.

/// Draws itself from the JSON in ChartData (src/web/charts/).
inline constexpr std::string_view Chart = "deck-chart";
inline constexpr std::string_view ChartData = "data-chart";
/// On a film or sound: it runs while its slide is in front, and begins anew when the slide comes back.
inline constexpr std::string_view Plays = "data-plays";

/// The start tag of a slide's section, of which the size is in CSS px.
std::string startSlide(int slideIndex, double width, double height);

// Ids.

/// "s3": of a slide by its one-based index; what lies in it has ids that begin with this and a hyphen.
std::string slideElement(int slideIndex);
/// "s3-sh7": of a top-level shape by its slide and the id in its p:cNvPr. A slide on which an id occurs again
/// has "s3-sh7-2" for its second shape.
std::string shapeElement(int slideIndex, std::uint32_t shapeId);
/// The shape's id in such an id; 0 in any other text.
std::uint32_t shapeOf(std::string_view element);

}  // namespace render::page

namespace render {

/// The style sheet that all slides share. A slide looks the same wherever it is put: of what surrounds it, it
/// takes over only whether it is seen and how the pointer acts.
std::string_view slideStyles();

}  // namespace render
