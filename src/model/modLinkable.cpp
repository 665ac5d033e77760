#include "model/modLinkable.h"

#include "basic/Error.h"
#include "basic/Strings.h"
#include "model/modGraph.h"
#include "model/modSlides.h"

namespace LF2000::modLinkable {

namespace {

std::string WhyNothing(PowerPoint::ShapeType type) {
  using PowerPoint::ShapeType;
  switch (type) {
    case ShapeType::Group:
      return "is a group; shapes in groups cannot be linked, so ungroup it first";
    case ShapeType::Line:
      return "is a line, which holds no text";
    case ShapeType::Media:
      return "plays a film or sound";
    case ShapeType::Diagram:
      return "is a diagram, whose shapes cannot be linked; convert it to shapes and ungroup them";
    case ShapeType::EmbeddedOLEObject:
    case ShapeType::LinkedOLEObject:
      return "is an object without a picture that a file could replace";
    default:
      return "holds no text and no picture";
  }
}

}  // namespace

bool HasPicture(PowerPoint::Shape& shape) try {
  static_cast<void>(shape.LinkFormat());
  return true;
} catch (const basic::Error&) {
  return false;
}

Answer Examine(PowerPoint::Shape& shape) {
  const PowerPoint::ShapeType type = shape.Type();
  if (type == PowerPoint::ShapeType::Group) return {Shows::Nothing, WhyNothing(type)};
  if (shape.HasTextFrame()) return {Shows::Text, {}};
  if (shape.HasTable()) return {Shows::Table, {}};
  try {
    if (modGraph::IsGraph(shape)) return {Shows::Graph, {}};
  } catch (const basic::Error& error) {
    return {Shows::Nothing, "is a chart that cannot be refilled: " + error.description};
  }
  if (HasPicture(shape)) return {Shows::File, {}};
  return {Shows::Nothing, WhyNothing(type)};
}

std::string KindName(PowerPoint::ShapeType type) {
  using PowerPoint::ShapeType;
  switch (type) {
    case ShapeType::AutoShape:
      return "shape";
    case ShapeType::Chart:
      return "chart";
    case ShapeType::Freeform:
      return "freeform";
    case ShapeType::Group:
      return "group";
    case ShapeType::EmbeddedOLEObject:
      return "object";
    case ShapeType::Line:
      return "line";
    case ShapeType::LinkedOLEObject:
      return "linked object";
    case ShapeType::LinkedPicture:
      return "linked picture";
    case ShapeType::Picture:
      return "picture";
    case ShapeType::Placeholder:
      return "placeholder";
    case ShapeType::Media:
      return "film or sound";
    case ShapeType::TextBox:
      return "text box";
    case ShapeType::Table:
      return "table";
    case ShapeType::Diagram:
      return "diagram";
  }
  return "shape";
}

NameCounts::NameCounts(PowerPoint::Slide& slide) {
  modSlides::ForEachShape(slide, [this](const std::shared_ptr<PowerPoint::Shape>& shape) {
    ++counts_[basic::UCase(shape->Name())];
  });
}

std::string NameCounts::WhyNotByName(const PowerPoint::Shape& shape) const {
  const auto found = counts_.find(basic::UCase(shape.Name()));
  if (found == counts_.end() || found->second < 2) return {};
  const std::int32_t others = found->second - 1;
  return "shares its name with " + std::to_string(others) + (others == 1 ? " other" : " others") +
         "; give each a name of its own (in PowerPoint: Selection Pane)";
}

std::string WhyNotInGroup(const PowerPoint::Shape& group) {
  return "stands in the group '" + group.Name() + "'; shapes in groups cannot be linked, so ungroup it first";
}

}  // namespace LF2000::modLinkable
