// Fonts, fills, borders and alignment of cell styles.

#include "workbook/drawing/CellLooks.h"

#include <algorithm>
#include <string_view>

#include "workbook/book/Xml.h"

namespace workbook {
namespace {

/// Elements like <b/>, <i val="0"/>.
bool isOn(pugi::xml_node parent, std::string_view name) {
  const pugi::xml_node node = xml::child(parent, name);
  if (!node) return false;
  const std::string_view value = xml::attribute(node, "val");
  return value != "0" && value != "false" && value != "none";
}

void readFont(pugi::xml_node font, const Palette& palette, CellLook& look) {
  constexpr double LargestSize = 409;
  if (const auto name = xml::attribute(xml::child(font, "name"), "val"); !name.empty()) look.font = name;
  const double size = xml::child(font, "sz").attribute("val").as_double();
  if (size > 0 && size <= LargestSize) look.size = size;
  look.isBold = isOn(font, "b");
  look.isItalic = isOn(font, "i");
  look.isUnderlined = isOn(font, "u");
  look.isStruck = isOn(font, "strike");
  look.color = palette.read(xml::child(font, "color")).value_or(0);
}

void readFill(pugi::xml_node fill, const Palette& palette, CellLook& look) {
  const pugi::xml_node pattern = xml::child(fill, "patternFill");
  const std::string_view type = xml::attribute(pattern, "patternType");
  if (type == "solid") {
    look.fill = palette.read(xml::child(pattern, "fgColor"));
  } else if (!type.empty() && type != "none") {
    look.fill = palette.read(xml::child(pattern, "bgColor"));
  } else if (const pugi::xml_node gradient = xml::child(fill, "gradientFill")) {
    look.fill = palette.read(xml::child(xml::child(gradient, "stop"), "color"));
  }
}

Border readBorder(pugi::xml_node node, const Palette& palette) {
  Border border;
  const std::string_view style = xml::attribute(node, "style");
  if (style.empty() || style == "none") return border;
  border.width = style == "thick" || style == "double" ? 3 : style.starts_with("medium") ? 2 : 1;
  border.isDouble = style == "double";
  if (style == "dotted" || style == "hair") border.dash = Border::Dash::Dotted;
  if (style.find("ash") != std::string_view::npos) border.dash = Border::Dash::Dashed;
  border.color = palette.read(xml::child(node, "color")).value_or(0);
  return border;
}

void readBorders(pugi::xml_node borders, const Palette& palette, CellLook& look) {
  // Sides may be named by the direction of reading instead.
  const auto side = [&](std::string_view name, std::string_view otherName) {
    const pugi::xml_node node = xml::child(borders, name);
    return readBorder(node ? node : xml::child(borders, otherName), palette);
  };
  look.borders = {side("left", "start"), side("right", "end"), side("top", "top"), side("bottom", "bottom")};
}

void readAlignment(pugi::xml_node alignment, CellLook& look) {
  const std::string_view across = xml::attribute(alignment, "horizontal");
  if (across == "left" || across == "fill") look.across = CellLook::Across::Left;
  if (across == "center" || across == "centerContinuous") look.across = CellLook::Across::Center;
  if (across == "right") look.across = CellLook::Across::Right;
  if (across == "justify" || across == "distributed") look.across = CellLook::Across::Justify;
  const std::string_view down = xml::attribute(alignment, "vertical");
  if (down == "top") look.down = CellLook::Down::Top;
  if (down == "center" || down == "justify" || down == "distributed") look.down = CellLook::Down::Center;
  look.wraps = xml::flag(alignment, "wrapText") || look.across == CellLook::Across::Justify;
  constexpr std::uint32_t DeepestIndent = 250;
  look.indent = std::min(xml::number(xml::attribute(alignment, "indent")).value_or(0), DeepestIndent);
}

std::vector<pugi::xml_node> items(pugi::xml_node root, std::string_view list) {
  std::vector<pugi::xml_node> found;
  for (const pugi::xml_node item : xml::child(root, list).children()) {
    if (item.type() == pugi::node_element) found.push_back(item);
  }
  return found;
}

}  // namespace

CellLooks::CellLooks(const Parts& parts, const std::string& stylesPart, const std::string& themePart) {
  if (stylesPart.empty()) return;
  const Palette palette(parts, themePart);
  const auto document = xml::parse(parts, stylesPart);
  const pugi::xml_node root = document->document_element();
  const auto fonts = items(root, "fonts");
  const auto fills = items(root, "fills");
  const auto borders = items(root, "borders");
  for (const pugi::xml_node style : items(root, "cellXfs")) {
    CellLook& look = looks_.emplace_back();
    const auto item = [&](const auto& list, std::string_view attribute) {
      const auto index = xml::number(xml::attribute(style, attribute)).value_or(0);
      return index < list.size() ? list[index] : pugi::xml_node();
    };
    readFont(item(fonts, "fontId"), palette, look);
    readFill(item(fills, "fillId"), palette, look);
    readBorders(item(borders, "borderId"), palette, look);
    readAlignment(xml::child(style, "alignment"), look);
  }
}

const CellLook& CellLooks::at(std::size_t style) const {
  return style < looks_.size() ? looks_[style] : plain_;
}

}  // namespace workbook
