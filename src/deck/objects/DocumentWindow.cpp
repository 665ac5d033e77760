#include "deck/objects/DocumentWindow.h"

#include <algorithm>

#include "deck/Failure.h"
#include "deck/objects/Shape.h"
#include "deck/objects/Slide.h"

namespace deck {

namespace {

pugi::xml_node shapeOf(const Presentation& deck, std::int32_t slide, std::uint32_t id) {
  const auto& all = deck.shapesOf(slide).all();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [id](pugi::xml_node node) { return presentationml::shapeId(node) == id; });
  return found == all.end() ? pugi::xml_node() : *found;
}

/// What was selected when it was asked for.
class Selection final : public PowerPoint::Selection {
 public:
  Selection(std::shared_ptr<Presentation> deck, std::int32_t slide, std::vector<std::uint32_t> shapes)
      : deck_(std::move(deck)), slide_(slide), shapes_(std::move(shapes)) {}

  [[nodiscard]] PowerPoint::SelectionType Type() const override {
    if (!shapes_.empty()) return PowerPoint::SelectionType::Shapes;
    return slide_ > 0 ? PowerPoint::SelectionType::Slides : PowerPoint::SelectionType::None;
  }

  [[nodiscard]] std::vector<std::shared_ptr<PowerPoint::Shape>> ShapeRange() override {
    std::vector<std::shared_ptr<PowerPoint::Shape>> range;
    for (const std::uint32_t id : shapes_) {
      if (const pugi::xml_node node = shapeOf(*deck_, slide_, id)) {
        range.push_back(std::make_shared<Shape>(deck_, slide_, node));
      }
    }
    return range;
  }

  [[nodiscard]] std::vector<std::shared_ptr<PowerPoint::Slide>> SlideRange() override {
    if (slide_ < 1) return {};
    return {std::make_shared<Slide>(deck_, slide_)};
  }

 private:
  std::shared_ptr<Presentation> deck_;
  std::int32_t slide_;
  std::vector<std::uint32_t> shapes_;
};

}  // namespace

std::shared_ptr<PowerPoint::Selection> DocumentWindow::Selection() {
  return std::make_shared<deck::Selection>(presentation_, slide_, shapes_);
}

void DocumentWindow::select(std::int32_t slide, std::vector<std::uint32_t> shapes) {
  if (slide < 1 || slide > presentation_->slideCount()) {
    fail("There is no slide " + std::to_string(slide) + "; the deck has " +
         std::to_string(presentation_->slideCount()) + ".");
  }
  std::erase_if(shapes, [&](std::uint32_t id) { return !shapeOf(*presentation_, slide, id); });
  slide_ = slide;
  shapes_ = std::move(shapes);
}

void DocumentWindow::show(std::shared_ptr<deck::Presentation> presentation) {
  presentation_ = std::move(presentation);
  slide_ = std::clamp(slide_, std::min(1, presentation_->slideCount()), presentation_->slideCount());
  if (slide_ > 0) select(slide_, shapes_);
}

}  // namespace deck
