#include "render/paint/Color.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "render/svg/HtmlOut.h"

namespace render {
namespace {

std::string colorOf(const char* xml) {
  static const ColorScheme scheme = {Color::rgb(0x000000), Color::rgb(0xFFFFFF), Color::rgb(0x44546A),
                                     Color::rgb(0xE7E6E6), Color::rgb(0x4472C4), Color::rgb(0xED7D31),
                                     Color::rgb(0xA5A5A5), Color::rgb(0xFFC000), Color::rgb(0x5B9BD5),
                                     Color::rgb(0x70AD47), Color::rgb(0x0563C1), Color::rgb(0x954F72)};
  static const ColorMap map;
  pugi::xml_document document;
  document.load_string(xml);
  const auto color = readColor(document.document_element(), {&scheme, &map, Color::rgb(0x102030)});
  if (!color) return "none";
  HtmlOut out;
  out << *color;
  return out.str();
}

// The values for theme colours are those that PowerPoint shows in its palette for them.
TEST(Color, NamesAndTransformsGiveWhatPowerPointShows) {
  const std::pair<const char*, const char*> cases[] = {
      {"<a:srgbClr val='12aB9f'/>", "#12ab9f"},
      {"<a:srgbClr val='12345'/>", "none"},
      {"<a:schemeClr val='tx2'/>", "#44546a"},
      {"<a:schemeClr val='phClr'/>", "#102030"},
      {"<a:schemeClr val='nobody'/>", "none"},
      {"<a:prstClr val='dkSlateBlue'/>", "#483d8b"},
      {"<a:prstClr val='medAquamarine'/>", "#66cdaa"},
      {"<a:prstClr val='ltGray'/>", "#d3d3d3"},
      {"<a:sysClr val='window'/>", "#ffffff"},
      {"<a:sysClr val='windowText' lastClr='010203'/>", "#010203"},
      {"<a:scrgbClr r='50000' g='0' b='100%'/>", "#bc00ff"},
      {"<a:hslClr hue='7200000' sat='100000' lum='25000'/>", "#008000"},
      {"<a:schemeClr val='accent1'><a:lumMod val='75000'/></a:schemeClr>", "#2f5597"},
      {"<a:schemeClr val='accent1'><a:lumMod val='40000'/><a:lumOff val='60000'/></a:schemeClr>", "#b4c7e7"},
      {"<a:schemeClr val='bg1'><a:lumMod val='85000'/></a:schemeClr>", "#d9d9d9"},
      {"<a:schemeClr val='accent1'><a:tint val='40000'/></a:schemeClr>", "#cfd5ea"},
      {"<a:srgbClr val='FFFFFF'><a:shade val='50000'/></a:srgbClr>", "#bcbcbc"},
      {"<a:srgbClr val='FF0000'><a:gamma/><a:shade val='50000'/><a:invGamma/></a:srgbClr>", "#800000"},
      {"<a:srgbClr val='FF0000'><a:alpha val='50000'/><a:alphaMod val='50000'/></a:srgbClr>", "#ff000040"},
      {"<a:srgbClr val='FF0000'><a:hueOff val='7200000'/></a:srgbClr>", "#00ff00"},
      {"<a:srgbClr val='FF0000'><a:comp/></a:srgbClr>", "#00ffff"},
      {"<a:srgbClr val='C08080'><a:satMod val='900000'/></a:srgbClr>", "#ff4141"},
      {"<a:srgbClr val='804020'><a:lumMod val='much'/><a:unknown val='1'/></a:srgbClr>", "#804020"},
  };
  for (const auto& [xml, expected] : cases) EXPECT_EQ(colorOf(xml), expected) << xml;
}

}  // namespace
}  // namespace render
