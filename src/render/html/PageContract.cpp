#include "render/html/PageContract.h"

#include <charconv>

namespace render::page {

namespace {

constexpr std::string_view ShapeMark = "-sh";

}  // namespace

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
