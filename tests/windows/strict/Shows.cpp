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

std::shared_ptr<NamedShow> namedShow(const std::shared_ptr<fakes::NamedShows>& shows,
                                     const std::shared_ptr<fakes::NamedShow>& show) {
  return std::make_shared<NamedShow>(NamedShow{shows, show});
}

struct Settings {
  std::shared_ptr<fakes::Presentation> of;
};

/// A running show; the view of an ended one has no slide.
struct View {
  std::shared_ptr<fakes::Window> window;
  [[nodiscard]] std::int32_t position() const { return window->View()->CurrentShowPosition(); }
  /// Without asking for the position, which some tests count.
  [[nodiscard]] bool isDone() const { return window->position > window->presentation->Count(); }
};

/// What a document window shows.
struct EditView {
  std::shared_ptr<PowerPoint::DocumentWindow> window;
};

}  // namespace

Class<NamedShow> describe(Tag<NamedShow>) {
  return Table<NamedShow>("NamedSlideShow")
      .get(L"Name", [](const auto& it) { return it->show->name; })
      .get(L"SlideIDs", [](const auto& it) { return it->show->ids; })
      .call(L"Delete", [](const auto& it) { std::erase(it->shows->items, it->show); });
}

Class<fakes::NamedShows> describe(Tag<fakes::NamedShows>) {
  using Target = fakes::NamedShows;
  return Table<Target>("NamedSlideShows")
      .get(L"Count", &Target::Count)
      .call(L"Item", {Kind::TextOrNumber},
            [](const auto& it, const Arguments& arguments) {
              if (!arguments.isText(0)) {
                return namedShow(it, it->items.at(static_cast<std::size_t>(arguments.number(0)) - 1));
              }
              for (const auto& show : it->items) {
                if (show->name == arguments.text(0)) return namedShow(it, show);
              }
              fakes::Fail("no custom show of this name");
            })
      .call(L"Add", {Kind::Text, Kind::Numbers}, [](const auto& it, const Arguments& arguments) {
        auto show = std::make_shared<fakes::NamedShow>();
        show->name = arguments.text(0);
        show->ids = arguments.numbers(1);
        it->items.push_back(show);
        return namedShow(it, show);
      });
}

Class<Settings> describe(Tag<Settings>) {
  return Table<Settings>("SlideShowSettings")
      .get(L"ShowType", [](const auto& it) { return it->of->showType; })
      .get(L"RangeType", [](const auto& it) { return it->of->rangeType; })
      .put(L"RangeType", Kind::Number,
           [](const auto& it, const Arguments& arguments) {
             it->of->rangeType = argument<PowerPoint::SlideShowRangeType>(arguments, 0);
           })
      .get(L"StartingSlide", [](const auto& it) { return it->of->startingSlide; })
      .put(L"StartingSlide", Kind::Number,
           [](const auto& it, const Arguments& arguments) { it->of->startingSlide = arguments.number(0); })
      .get(L"EndingSlide", [](const auto& it) { return it->of->endingSlide; })
      .put(L"EndingSlide", Kind::Number,
           [](const auto& it, const Arguments& arguments) { it->of->endingSlide = arguments.number(0); })
      // The fake's shows do.
      .get(L"LoopUntilStopped", [](const auto&) { return triState(true); })
      .get(L"NamedSlideShows", [](const auto& it) { return it->of->namedShows; });
}

Class<View> describe(Tag<View>) {
  return Table<View>("SlideShowView")
      .get(L"CurrentShowPosition", &View::position)
      .get(L"State", [](const auto& it) { return std::int32_t{it->isDone() ? 5 : 1}; })
      .get(L"IsNamedShow", [](const auto&) { return triState(false); })
      .get(L"Slide", [](const auto& it) { return it->window->View()->Slide(); })
      .get(L"PointerType", [](const auto& it) { return it->window->View()->PointerType(); })
      .put(L"PointerType", Kind::Number, [](const auto& it, const Arguments& arguments) {
        it->window->View()->PointerType(argument<PowerPoint::SlideShowPointerType>(arguments, 0));
      });
}

Class<PowerPoint::SlideShowWindow> describe(Tag<PowerPoint::SlideShowWindow>) {
  using Window = PowerPoint::SlideShowWindow;
  return Table<Window>("SlideShowWindow")
      .get(L"Presentation", &Window::Presentation)
      .get(L"View", [](const auto& it) {
        return std::make_shared<View>(View{std::dynamic_pointer_cast<fakes::Window>(it)});
      });
}

Class<PowerPoint::Selection> describe(Tag<PowerPoint::Selection>) {
  using PowerPoint::Selection;
  return Table<Selection>("Selection")
      .get(L"Type", &Selection::Type)
      .get(L"ShapeRange", &Selection::ShapeRange)
      .get(L"SlideRange", &Selection::SlideRange);
}

Class<EditView> describe(Tag<EditView>) {
  return Table<EditView>("View").get(L"Slide", [](const auto& it) {
    const auto slides = it->window->Selection()->SlideRange();
    if (slides.empty()) fakes::Fail("no slide is being edited");
    return slides.front();
  });
}

Class<PowerPoint::DocumentWindow> describe(Tag<PowerPoint::DocumentWindow>) {
  using Window = PowerPoint::DocumentWindow;
  return Table<Window>("DocumentWindow")
      .get(L"Presentation", &Window::Presentation)
      .get(L"Selection", &Window::Selection)
      .get(L"View", [](const auto& it) { return std::make_shared<EditView>(EditView{it}); });
}

Ptr<IDispatch> settingsOf(const PresentationPtr& presentation) {
  auto fake = std::dynamic_pointer_cast<fakes::Presentation>(presentation);
  return of(std::make_shared<Settings>(Settings{std::move(fake)}));
}

}  // namespace strict
