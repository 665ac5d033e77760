#include "windows/automation/EditWindow.h"

#include <utility>

#include "basic/Error.h"
#include "windows/automation/Classes.h"
#include "windows/automation/Shapes.h"
#include "windows/automation/Slides.h"

namespace windows::automation {

using PowerPoint::SelectionType;

SelectionType Selection::Type() const { return static_cast<SelectionType>(selection_.number(L"Type")); }

std::vector<std::shared_ptr<PowerPoint::Shape>> Selection::ShapeRange() {
  std::vector<std::shared_ptr<PowerPoint::Shape>> shapes;
  const SelectionType type = Type();
  if (type != SelectionType::Shapes && type != SelectionType::Text) return shapes;
  const com::Object range = selection_.object(classes::ShapeRange, L"ShapeRange");
  const com::Object slide =
      selection_.object(classes::SlideRange, L"SlideRange").object(classes::Slide, L"Item", 1);
  const ShapePlace place{own_, slide.number(L"SlideID")};
  for (std::int32_t i = 1; i <= range.number(L"Count"); ++i) {
    shapes.push_back(std::make_shared<Shape>(range.object(classes::Shape, L"Item", i), place));
  }
  return shapes;
}

std::vector<std::shared_ptr<PowerPoint::Slide>> Selection::SlideRange() {
  std::vector<std::shared_ptr<PowerPoint::Slide>> slides;
  if (Type() == SelectionType::None) {
    try {
      const com::Object view = window_.object(classes::View, L"View");
      slides.push_back(std::make_shared<Slide>(view.object(classes::Slide, L"Slide"), own_));
    } catch (const basic::Error&) {
      // Views of many slides, and of none, edit no slide.
      return {};
    }
    return slides;
  }
  const com::Object range = selection_.object(classes::SlideRange, L"SlideRange");
  for (std::int32_t i = 1; i <= range.number(L"Count"); ++i) {
    slides.push_back(std::make_shared<Slide>(range.object(classes::Slide, L"Item", i), own_));
  }
  return slides;
}

std::shared_ptr<PowerPoint::Presentation> DocumentWindow::Presentation() {
  return known_->of(window_.get(L"Presentation").object());
}

std::shared_ptr<PowerPoint::Selection> DocumentWindow::Selection() {
  const auto presentation = known_->of(window_.get(L"Presentation").object());
  return std::make_shared<automation::Selection>(window_.object(classes::Selection, L"Selection"), window_,
                                                 presentation->own());
}

}  // namespace windows::automation
