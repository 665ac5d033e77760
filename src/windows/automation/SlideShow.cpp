// How shows are set up, and where a running one stands and goes.

#include "windows/automation/SlideShow.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "windows/automation/Classes.h"
#include "windows/automation/Slides.h"

namespace windows::automation {
namespace {

class NamedSlideShow final : public PowerPoint::NamedSlideShow {
 public:
  NamedSlideShow(com::Object shows, com::Object show) : shows_(std::move(shows)), show_(std::move(show)) {}
  [[nodiscard]] std::string Name() const override { return show_.text(L"Name"); }
  [[nodiscard]] std::vector<std::int32_t> SlideIDs() const override {
    return show_.get(L"SlideIDs").numbers();
  }
  void SlideIDs(const std::vector<std::int32_t>& ids) override {
    const std::string name = Name();
    show_.call(L"Delete");
    show_ = shows_.object(classes::NamedSlideShow, L"Add", name, ids);
  }

 private:
  com::Object shows_;
  com::Object show_;
};

class NamedSlideShows final : public PowerPoint::NamedSlideShows {
 public:
  explicit NamedSlideShows(com::Object shows) : shows_(std::move(shows)) {}
  [[nodiscard]] std::int32_t Count() const override { return shows_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::NamedSlideShow> Item(std::int32_t index) override {
    return std::make_shared<NamedSlideShow>(shows_, shows_.object(classes::NamedSlideShow, L"Item", index));
  }

 private:
  com::Object shows_;
};

/// The slides of a custom show as places of the presentation.
std::vector<std::int32_t> slidesOf(const com::Object& settings, const com::Object& slides) {
  const com::Object show = settings.object(classes::NamedSlideShows, L"NamedSlideShows")
                               .object(classes::NamedSlideShow, L"Item", settings.text(L"SlideShowName"));
  std::vector<std::int32_t> order = show.get(L"SlideIDs").numbers();
  for (std::int32_t& slide : order) {
    slide = slides.object(classes::Slide, L"FindBySlideID", slide).number(L"SlideIndex");
  }
  return order;
}

Course courseOf(const com::Object& presentation) {
  const com::Object settings = presentation.object(classes::SlideShowSettings, L"SlideShowSettings");
  const com::Object slides = presentation.object(classes::Slides, L"Slides");
  const auto range = static_cast<PowerPoint::SlideShowRangeType>(settings.number(L"RangeType"));
  Course course;
  course.loops = settings.flag(L"LoopUntilStopped") ||
                 settings.number(L"ShowType") == static_cast<std::int32_t>(PowerPoint::SlideShowType::Kiosk);
  if (range == PowerPoint::SlideShowRangeType::ShowNamedSlideShow) {
    course.order = slidesOf(settings, slides);
    return course;
  }
  const bool isAll = range == PowerPoint::SlideShowRangeType::ShowAll;
  const std::int32_t first = isAll ? 1 : settings.number(L"StartingSlide");
  const std::int32_t last = isAll ? slides.number(L"Count") : settings.number(L"EndingSlide");
  course.order.resize(static_cast<std::size_t>(std::max(last - first + 1, 0)));
  std::iota(course.order.begin(), course.order.end(), first);
  return course;
}

class SlideShowView final : public PowerPoint::SlideShowView {
 public:
  SlideShowView(com::Object view, std::shared_ptr<Presentation> presentation)
      : view_(std::move(view)), presentation_(std::move(presentation)) {}

  [[nodiscard]] std::int32_t CurrentShowPosition() const override {
    if (isAtEnd()) return presentation_->Slides()->Count() + 1;
    // Within a custom show the object model counts that one's slides.
    return view_.flag(L"IsNamedShow") ? slide().number(L"SlideIndex") : view_.number(L"CurrentShowPosition");
  }
  [[nodiscard]] PowerPoint::SlidesAhead SlidesAhead() const override {
    if (isAtEnd()) return {};
    const Course course = courseOf(presentation_->object());
    const auto slides = presentation_->Slides();
    return slidesAhead(course, placeIn(course), [&slides](std::int32_t index) {
      return slides->Item(index)->SlideShowTransition()->Hidden();
    });
  }
  [[nodiscard]] std::shared_ptr<PowerPoint::Slide> Slide() override {
    return std::make_shared<automation::Slide>(slide(), presentation_->own());
  }
  [[nodiscard]] PowerPoint::SlideShowPointerType PointerType() const override {
    return static_cast<PowerPoint::SlideShowPointerType>(view_.number(L"PointerType"));
  }
  void PointerType(PowerPoint::SlideShowPointerType type) override {
    view_.put(L"PointerType", static_cast<std::int32_t>(type));
  }

 private:
  [[nodiscard]] bool isAtEnd() const {
    constexpr std::int32_t Done = 5;  // ppSlideShowDone
    return view_.number(L"State") == Done;
  }
  [[nodiscard]] com::Object slide() const { return view_.object(classes::Slide, L"Slide"); }
  /// A slide may stand in a custom show twice: its position says where it is.
  [[nodiscard]] std::size_t placeIn(const Course& course) const {
    const std::int32_t position = view_.number(L"CurrentShowPosition");
    if (view_.flag(L"IsNamedShow")) return static_cast<std::size_t>(std::max(position - 1, 0));
    const auto found = std::find(course.order.begin(), course.order.end(), position);
    return static_cast<std::size_t>(found - course.order.begin());
  }

  com::Object view_;
  std::shared_ptr<Presentation> presentation_;
};

}  // namespace

PowerPoint::SlidesAhead slidesAhead(const Course& course, std::size_t place,
                                    const std::function<bool(std::int32_t)>& isHidden) {
  PowerPoint::SlidesAhead ahead;
  const std::vector<std::int32_t>& order = course.order;
  const std::size_t end = course.loops ? place + order.size() : order.size();
  for (std::size_t at = place + 1; at < end; ++at) {
    const std::int32_t slide = order[at % order.size()];
    if (!isHidden(slide)) {
      ahead.Next = slide;
      return ahead;
    }
    ahead.PassedOver.push_back(slide);
  }
  if (course.loops) return ahead;
  for (std::size_t before = std::min(place, order.size()); before > 0; --before) {
    if (isHidden(order[before - 1])) ahead.PassedOver.push_back(order[before - 1]);
  }
  return ahead;
}

PowerPoint::SlideShowType SlideShowSettings::ShowType() const {
  return static_cast<PowerPoint::SlideShowType>(settings_.number(L"ShowType"));
}

PowerPoint::SlideShowRangeType SlideShowSettings::RangeType() const {
  return static_cast<PowerPoint::SlideShowRangeType>(settings_.number(L"RangeType"));
}

void SlideShowSettings::RangeType(PowerPoint::SlideShowRangeType type) {
  settings_.put(L"RangeType", static_cast<std::int32_t>(type));
}

std::shared_ptr<PowerPoint::NamedSlideShows> SlideShowSettings::NamedSlideShows() {
  return std::make_shared<automation::NamedSlideShows>(
      settings_.object(classes::NamedSlideShows, L"NamedSlideShows"));
}

std::shared_ptr<Presentation> SlideShowWindow::shown() const {
  return known_->of(window_.get(L"Presentation").object());
}

std::shared_ptr<PowerPoint::Presentation> SlideShowWindow::Presentation() { return shown(); }

std::shared_ptr<PowerPoint::SlideShowView> SlideShowWindow::View() {
  return std::make_shared<SlideShowView>(window_.object(classes::SlideShowView, L"View"), shown());
}

}  // namespace windows::automation
