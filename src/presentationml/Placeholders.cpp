#include "presentationml/Placeholders.h"

#include "presentationml/ShapeNode.h"

namespace presentationml {

std::string_view placeholderType(pugi::xml_node ph) {
  const std::string_view type = ph.attribute("type").value();
  return type.empty() ? "obj" : type;
}

std::string_view masterType(pugi::xml_node ph) {
  const std::string_view type = placeholderType(ph);
  if (type == "title" || type == "ctrTitle") return "title";
  if (type == "dt" || type == "ftr" || type == "sldNum" || type == "hdr") return type;
  return "body";
}

pugi::xml_node layoutCounterpart(pugi::xml_node tree, pugi::xml_node ph) {
  const auto wanted = masterType(ph);
  const std::string_view index = ph.attribute("idx").value();
  pugi::xml_node byType;
  for (const auto shape : tree.children()) {
    const auto candidate = placeholder(shape);
    if (!candidate) continue;
    const bool sameType = masterType(candidate) == wanted;
    const std::string_view candidateIndex = candidate.attribute("idx").value();
    if (wanted == "body") {
      if (sameType && (candidateIndex.empty() ? "0" : candidateIndex) == (index.empty() ? "0" : index))
        return shape;
      if (!byType && placeholderType(candidate) == placeholderType(ph) && index.empty()) byType = shape;
    } else if (sameType) {
      if (candidateIndex == index) return shape;
      if (!byType) byType = shape;
    }
  }
  return byType;
}

pugi::xml_node masterCounterpart(pugi::xml_node tree, std::string_view type) {
  for (const auto shape : tree.children()) {
    const auto candidate = placeholder(shape);
    if (candidate && masterType(candidate) == type) return shape;
  }
  return {};
}

}  // namespace presentationml
