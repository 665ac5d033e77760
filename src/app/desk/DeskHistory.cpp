#include "app/desk/DeskHistory.h"

#include <map>
#include <set>
#include <vector>

#include "deck/objects/Slide.h"
#include "model/modSample.h"

namespace app {

namespace {

void fill(OpenDeck& open, int slideIndex, const std::set<std::uint32_t>& ids) {
  const auto slide = open.presentation->Slides()->Item(slideIndex);
  const auto shapes = slide->Shapes();
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    const auto shape = shapes->Item(i);
    if (ids.contains(static_cast<std::uint32_t>(shape->Id()))) open.model->FillShape(*slide, shape);
  }
}

}  // namespace

void takeUp(const StepEffect& effect, deck::Application& application, OpenDeck& open, DeskWindow& window) {
  if (effect.presentation) open.model->TakeUpTags();
  LF2000::modSample::Follow(*open.model);
  std::map<int, std::set<std::uint32_t>> touched;
  for (const deck::OwnerId& owner : effect.slides) {
    if (const auto slide = open.slides.find(owner.slide)) touched[*slide];
  }
  for (const deck::OwnerId& owner : effect.shapes) {
    if (const auto slide = open.slides.find(owner.slide)) touched[*slide].insert(owner.shape);
  }
  for (const auto& [slide, shapes] : touched) fill(open, slide, shapes);
  if (!touched.empty()) {
    const auto& [slide, shapes] = *touched.begin();
    application.select(*window.document, slide, std::vector<std::uint32_t>(shapes.begin(), shapes.end()));
  }
}

}  // namespace app
