#include "app/show/StaleValues.h"

#include "model/clsShape.h"
#include "render/html/PageContract.h"

namespace app {

namespace {

bool showsData(LF2000::SourceType type) {
  using LF2000::SourceType;
  return type == SourceType::DataField || type == SourceType::LinkedObject || type == SourceType::Graph;
}

}  // namespace

std::optional<StaleData> staleDataNamed(std::string_view name) {
  if (name == "keep") return StaleData::Keep;
  if (name == "mark") return StaleData::Mark;
  if (name == "blank") return StaleData::Blank;
  return std::nullopt;
}

bool StaleValues::look() { return freshness_.look() && policy_ != StaleData::Keep; }

void StaleValues::addTo(web::ScreenState& state, int slide, const std::vector<LinkedShape>& linked) const {
  if (policy_ == StaleData::Keep) return;
  for (const LinkedShape& shape : linked) {
    const auto type = static_cast<LF2000::SourceType>(shape.sourceType);
    if (!showsData(type)) continue;
    if (!freshness_.isStale(slide) && !freshness_.isStale(shape.connectionKey())) continue;
    auto& elements = policy_ == StaleData::Mark              ? state.marked
                     : type == LF2000::SourceType::DataField ? state.blanked
                                                             : state.hidden;
    elements.push_back(render::page::shapeElement(slide, shape.id));
  }
}

}  // namespace app
