#include "render/html/PageContract.h"

#include <charconv>

#include "render/geometry/Decimal.h"

namespace render::page {

namespace {

constexpr std::string_view ShapeMark = "-sh";

}  // namespace

std::string startSlide(int slideIndex, double width, double height) {
  std::string html = "<section class=\"";
  html.append(Slide).append("\" id=\"").append(slideElement(slideIndex)).append("\" style=\"width:");
  appendDecimal(html, width, 2);
  html += "px;height:";
  appendDecimal(html, height, 2);
  return html += "px\">";
}

std::string slideElement(int slideIndex) { return "s" + std::to_string(slideIndex); }

std::string shapeElement(int slideIndex, std::uint32_t shapeId) {
  return slideElement(slideIndex).append(ShapeMark).append(std::to_string(shapeId));
}

std::uint32_t shapeOf(std::string_view element) {
  std::uint32_t id = 0;
  const auto mark = element.find(ShapeMark);
  if (mark != std::string_view::npos)
    std::from_chars(element.data() + mark + ShapeMark.size(), element.data() + element.size(), id);
  return id;
}

}  // namespace render::page
