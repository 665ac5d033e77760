// The presentation program, what is open in it, and its events.

#include <string>
#include <utility>
#include <vector>

#include "fakes/FakePowerPoint.h"
#include "windows/strict/Classes.h"
#include "windows/strict/Events.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

using ApplicationPtr = std::shared_ptr<PowerPoint::Application>;
using PresentationPtr = std::shared_ptr<PowerPoint::Presentation>;

/// EApplication.
constexpr IID ApplicationEvents = {
    0x914934C2, 0x5A91, 0x11CF, {0x87, 0x00, 0x00, 0xAA, 0x00, 0x60, 0x26, 0x3B}};

/// Raises on the point what the fake raises on its sink.
class Raiser final : public PowerPoint::ApplicationEvents {
 public:
  explicit Raiser(const EventPoint& point) : point_(point) {}

  void WindowSelectionChange(const std::shared_ptr<PowerPoint::Selection>& selection) override {
    raise(2001, given(selection));
  }
  void PresentationClose(const PresentationPtr& presentation) override { raise(2004, given(presentation)); }
  void PresentationSave(const PresentationPtr& presentation) override { raise(2005, given(presentation)); }
  void PresentationOpen(const PresentationPtr& presentation) override { raise(2006, given(presentation)); }
  void NewPresentation(const PresentationPtr& presentation) override { raise(2007, given(presentation)); }
  void WindowActivate(const PresentationPtr& presentation,
                      const std::shared_ptr<PowerPoint::DocumentWindow>& window) override {
    raise(2009, given(presentation), given(window));
  }
  void SlideShowBegin(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) override {
    raise(2011, given(window));
  }
  void SlideShowNextSlide(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) override {
    raise(2013, given(window));
  }
  void SlideShowEnd(const PresentationPtr& presentation) override { raise(2014, given(presentation)); }
  void PresentationPrint(const PresentationPtr& presentation) override { raise(2015, given(presentation)); }

 private:
  template <typename... Values>
  void raise(DISPID event, Values... values) {
    std::vector<Variant> arguments;
    (arguments.push_back(std::move(values)), ...);
    const Ptr<EventPoint> held = Ptr<EventPoint>::sharing(const_cast<EventPoint*>(&point_));
    point_.raise(event, std::move(arguments));
  }
  const EventPoint& point_;
};

Ptr<IConnectionPoint> pointOf(const ApplicationPtr& application) {
  auto raiser = std::make_shared<std::shared_ptr<Raiser>>();
  auto* point = new EventPoint(ApplicationEvents, [application, raiser](EventPoint& self, bool isSubscribed) {
    if (!*raiser) *raiser = std::make_shared<Raiser>(self);
    application->Advise(isSubscribed ? raiser->get() : nullptr);
  });
  return Ptr<IConnectionPoint>::taking(point);
}

}  // namespace

Class<PowerPoint::Presentations> describe(Tag<PowerPoint::Presentations>) {
  using PowerPoint::Presentations;
  return Table<Presentations>("Presentations")
      .get(L"Count", &Presentations::Count)
      .call(L"Item", {Kind::Number},
            [](const auto&, const Arguments&) {
              // The fake counts those that are open, and keeps none.
              const auto another = std::make_shared<fakes::Presentation>();
              another->fullName = "/elsewhere/another.pptx";
              return PresentationPtr(another);
            })
      .call(L"Open",
            {Kind::Text, optional(Kind::TriState), optional(Kind::TriState), optional(Kind::TriState)},
            &Presentations::Open);
}

Class<PowerPoint::Application> describe(Tag<PowerPoint::Application>) {
  using PowerPoint::Application;
  return Table<Application>("Application")
      .get(L"Version", &Application::Version)
      .get(L"Presentations", &Application::Presentations)
      .get(L"ActiveWindow",
           [](const auto& it) {
             auto window = it->ActiveWindow();
             if (!window) fakes::Fail("There is no active window.");
             return window;
           })
      .get(L"CommandBars", &Application::CommandBars)
      .call(L"StartNewUndoEntry", &Application::StartNewUndoEntry)
      .raises(ApplicationEvents, pointOf);
}

Class<PowerPoint::Slides> describe(Tag<PowerPoint::Slides>) {
  using PowerPoint::Slides;
  return Table<Slides>("Slides")
      .get(L"Count", &Slides::Count)
      .call(L"Item", {Kind::Number}, &Slides::Item)
      .call(L"FindBySlideID", {Kind::Number}, [](const auto& it, const Arguments& arguments) {
        for (std::int32_t i = 1; i <= it->Count(); ++i) {
          if (auto slide = it->Item(i); slide->SlideID() == arguments.number(0)) return slide;
        }
        fakes::Fail("no slide of this id");
      });
}

Class<PowerPoint::Presentation> describe(Tag<PowerPoint::Presentation>) {
  using PowerPoint::Presentation;
  return Table<Presentation>("Presentation")
      .get(L"FullName", &Presentation::FullName)
      .property(L"Saved", Kind::TriState, &Presentation::Saved, &Presentation::Saved)
      .call(L"Save", &Presentation::Save)
      .call(L"SaveCopyAs", {Kind::Text, optional(Kind::Number), optional(Kind::TriState)},
            &Presentation::SaveCopyAs)
      .call(L"Close", &Presentation::Close)
      .get(L"Tags", &Presentation::Tags)
      .get(L"Slides", &Presentation::Slides)
      .get(L"SlideShowSettings", settingsOf)
      .call(L"UpdateLinks", &Presentation::UpdateLinks);
}

Class<AddInDesigner::AddIn> describe(Tag<AddInDesigner::AddIn>) {
  return Table<AddInDesigner::AddIn>("COMAddIn").get(L"ProgId", [](const auto& it) {
    return it->Property("ProgId");
  });
}

}  // namespace strict
