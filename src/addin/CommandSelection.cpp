#include "addin/CommandSelection.h"

#include "model/clsShape.h"

namespace LF2000 {

CommandSelection::CommandSelection(PowerPoint::Application& host, const FindEntry& find) {
  const auto window = host.ActiveWindow();
  if (!window) return;
  presentation_ = find(window->Presentation());
  if (!presentation_) return;
  const auto selection = window->Selection();
  const auto slides = selection->SlideRange();
  if (!slides.empty()) slide_ = slides.front();
  shapes_ = selection->ShapeRange();
}

const CommandSelection::Links& CommandSelection::LinksOfShapes() const {
  if (links_) return *links_;
  Links links;
  clsShape link;
  for (const auto& shape : shapes_) {
    link.ShapeItem(shape);
    if (!link.LumenfoldEnabled()) continue;
    ++links.Linked;
    const auto type = static_cast<SourceType>(link.SourceType());
    if (type != SourceType::DataField && type != SourceType::LinkedObject) continue;
    ++links.WithRow;
    if (link.Row() < 2 && links.FirstRowShape.empty()) links.FirstRowShape = shape->Name();
  }
  return links_.emplace(std::move(links));
}

std::string CommandSelection::WhyNot(
    const std::function<bool(PowerPoint::Shape&, modLinkable::Shows)>& takes,
    const std::function<std::string(const PowerPoint::Shape&)>& otherwise) const {
  if (shapes_.empty()) return "Select a shape first.";
  if (answers_.empty()) {
    const modLinkable::NameCounts names(*slide_);
    for (const auto& shape : shapes_) {
      modLinkable::Answer answer = modLinkable::Examine(*shape);
      if (answer.What != modLinkable::Shows::Nothing) answer.Why = names.WhyNotByName(*shape);
      answers_.push_back(std::move(answer));
    }
  }
  for (std::size_t i = 0; i < shapes_.size(); ++i) {
    if (!answers_[i].Why.empty()) return "'" + shapes_[i]->Name() + "' " + answers_[i].Why + ".";
    if (!takes(*shapes_[i], answers_[i].What)) return otherwise(*shapes_[i]);
  }
  return {};
}

}  // namespace LF2000
