// How shows are set up, shows that run, and the windows in which presentations are edited.

#include <utility>

#include "fakes/FakePowerPoint.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

using PresentationPtr = std::shared_ptr<PowerPoint::Presentation>;

/// A custom show in its list.
struct NamedShow {
  std::shared_ptr<fakes::NamedShows> shows;
  std::shared_ptr<fakes::NamedShow> show;
};

const Class<NamedShow>& namedShowClass() {
  static const Class<NamedShow> type{
      "NamedSlideShow",
      {get<NamedShow>(L"Name", [](const auto& it) { return it->show->name; }),
       get<NamedShow>(L"SlideIDs", [](const auto& it) { return it->show->ids; }),
       action<NamedShow>(L"Delete", [](const auto& it) { std::erase(it->shows->items, it->show); })}};
  return type;
}

Ptr<IDispatch> namedShow(const std::shared_ptr<fakes::NamedShows>& shows,
                         const std::shared_ptr<fakes::NamedShow>& show) {
  return dispatchOf(std::make_shared<NamedShow>(NamedShow{shows, show}), namedShowClass());
}

const Class<fakes::NamedShows>& namedShowsClass() {
  using Target = fakes::NamedShows;
  static const Class<Target> type{
      "NamedSlideShows",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::TextOrNumber},
                    [](const auto& it, const Arguments& arguments) {
                      if (!arguments.isText(0)) {
                        return namedShow(it, it->items.at(static_cast<std::size_t>(arguments.number(0)) - 1));
                      }
                      for (const auto& show : it->items) {
                        if (show->name == arguments.text(0)) return namedShow(it, show);
                      }
                      fakes::Fail("no custom show of this name");
                    }),
       call<Target>(L"Add", {Kind::Text, Kind::Numbers}, [](const auto& it, const Arguments& arguments) {
         auto show = std::make_shared<fakes::NamedShow>();
         show->name = arguments.text(0);
         show->ids = arguments.numbers(1);
         it->items.push_back(show);
         return namedShow(it, show);
       })}};
  return type;
}

struct Settings {
  std::shared_ptr<fakes::Presentation> of;
};

const Class<Settings>& settingsClass() {
  using Target = Settings;
  static const Class<Target> type{
      "SlideShowSettings",
      {get<Target>(L"ShowType", [](const auto& it) { return it->of->showType; }),
       get<Target>(L"RangeType", [](const auto& it) { return it->of->rangeType; }),
       put<Target>(L"RangeType", Kind::Number,
                   [](const auto& it, const Arguments& arguments) {
                     it->of->rangeType = static_cast<PowerPoint::SlideShowRangeType>(arguments.number(0));
                   }),
       get<Target>(L"StartingSlide", [](const auto& it) { return it->of->startingSlide; }),
       put<Target>(
           L"StartingSlide", Kind::Number,
           [](const auto& it, const Arguments& arguments) { it->of->startingSlide = arguments.number(0); }),
       get<Target>(L"EndingSlide", [](const auto& it) { return it->of->endingSlide; }),
       put<Target>(
           L"EndingSlide", Kind::Number,
           [](const auto& it, const Arguments& arguments) { it->of->endingSlide = arguments.number(0); }),
       // The fake's shows do.
       get<Target>(L"LoopUntilStopped", [](const auto&) { return triState(true); }),
       get<Target>(L"NamedSlideShows",
                   [](const auto& it) { return dispatchOf(it->of->namedShows, namedShowsClass()); })}};
  return type;
}

/// A running show; the view of an ended one has no slide.
struct View {
  std::shared_ptr<fakes::Window> window;
  [[nodiscard]] std::int32_t position() const { return window->View()->CurrentShowPosition(); }
  /// Without asking for the position, which some tests count.
  [[nodiscard]] bool isDone() const { return window->position > window->presentation->Count(); }
};

const Class<View>& viewClass() {
  static const Class<View> type{
      "SlideShowView",
      {get<View>(L"CurrentShowPosition", [](const auto& it) { return it->position(); }),
       get<View>(L"State", [](const auto& it) { return std::int32_t{it->isDone() ? 5 : 1}; }),
       get<View>(L"IsNamedShow", [](const auto&) { return triState(false); }),
       get<View>(L"Slide", [](const auto& it) { return it->window->View()->Slide(); }),
       get<View>(L"PointerType", [](const auto& it) { return it->window->View()->PointerType(); }),
       put<View>(L"PointerType", Kind::Number, [](const auto& it, const Arguments& arguments) {
         it->window->View()->PointerType(static_cast<PowerPoint::SlideShowPointerType>(arguments.number(0)));
       })}};
  return type;
}

const Class<PowerPoint::SlideShowWindow>& showWindowClass() {
  using Target = PowerPoint::SlideShowWindow;
  static const Class<Target> type{
      "SlideShowWindow",
      {get<Target>(L"Presentation", [](const auto& it) { return it->Presentation(); }),
       get<Target>(L"View", [](const auto& it) {
         return dispatchOf(std::make_shared<View>(View{std::dynamic_pointer_cast<fakes::Window>(it)}),
                           viewClass());
       })}};
  return type;
}

template <typename Item>
Ptr<IDispatch> range(const char* name, std::vector<std::shared_ptr<Item>> items) {
  static const Class<List<Item>> type = listClass<Item>(name);
  return listOf(type, std::move(items));
}

const Class<PowerPoint::Selection>& selectionClass() {
  using Target = PowerPoint::Selection;
  static const Class<Target> type{
      "Selection",
      {get<Target>(L"Type", [](const auto& it) { return it->Type(); }),
       get<Target>(L"ShapeRange", [](const auto& it) { return range("ShapeRange", it->ShapeRange()); }),
       get<Target>(L"SlideRange", [](const auto& it) { return range("SlideRange", it->SlideRange()); })}};
  return type;
}

/// What a document window shows.
struct EditView {
  std::shared_ptr<PowerPoint::DocumentWindow> window;
};

const Class<EditView>& editViewClass() {
  static const Class<EditView> type{"View", {get<EditView>(L"Slide", [](const auto& it) {
                                      const auto slides = it->window->Selection()->SlideRange();
                                      if (slides.empty()) fakes::Fail("no slide is being edited");
                                      return slides.front();
                                    })}};
  return type;
}

const Class<PowerPoint::DocumentWindow>& documentWindowClass() {
  using Target = PowerPoint::DocumentWindow;
  static const Class<Target> type{
      "DocumentWindow",
      {get<Target>(L"Presentation", [](const auto& it) { return it->Presentation(); }),
       get<Target>(L"Selection", [](const auto& it) { return it->Selection(); }),
       get<Target>(L"View", [](const auto& it) {
         return dispatchOf(std::make_shared<EditView>(EditView{it}), editViewClass());
       })}};
  return type;
}

}  // namespace

Ptr<IDispatch> settingsOf(const PresentationPtr& presentation) {
  auto fake = std::dynamic_pointer_cast<fakes::Presentation>(presentation);
  return dispatchOf(std::make_shared<Settings>(Settings{std::move(fake)}), settingsClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::SlideShowWindow>& target) {
  return dispatchOf(target, showWindowClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::DocumentWindow>& target) {
  return dispatchOf(target, documentWindowClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Selection>& target) {
  return dispatchOf(target, selectionClass());
}

}  // namespace strict
