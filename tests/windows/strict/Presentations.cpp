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

const Class<PowerPoint::Presentations>& presentationsClass() {
  using Target = PowerPoint::Presentations;
  static const Class<Target> type{
      "Presentations",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::Number},
                    [](const auto&, const Arguments&) {
                      // The fake counts those that are open, and keeps none.
                      const auto another = std::make_shared<fakes::Presentation>();
                      another->fullName = "/elsewhere/another.pptx";
                      return PresentationPtr(another);
                    }),
       call<Target>(
           L"Open",
           {Kind::Text, optional(Kind::TriState), optional(Kind::TriState), optional(Kind::TriState)},
           [](const auto& it, const Arguments& arguments) { return it->Open(arguments.text(0)); })}};
  return type;
}

const Class<PowerPoint::Application>& applicationClass() {
  using Target = PowerPoint::Application;
  static const Class<Target> type{
      "Application",
      {get<Target>(L"Version", [](const auto& it) { return it->Version(); }),
       get<Target>(L"Presentations",
                   [](const auto& it) { return dispatchOf(it->Presentations(), presentationsClass()); }),
       get<Target>(L"ActiveWindow",
                   [](const auto& it) {
                     auto window = it->ActiveWindow();
                     if (!window) fakes::Fail("There is no active window.");
                     return window;
                   }),
       get<Target>(L"CommandBars", [](const auto& it) { return it->CommandBars(); }),
       action<Target>(L"StartNewUndoEntry", [](const auto& it) { it->StartNewUndoEntry({}, {}); })},
      {{ApplicationEvents, pointOf}}};
  return type;
}

const Class<PowerPoint::Slides>& slidesClass() {
  using Target = PowerPoint::Slides;
  static const Class<Target> type{
      "Slides",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::Number},
                    [](const auto& it, const Arguments& arguments) { return it->Item(arguments.number(0)); }),
       call<Target>(L"FindBySlideID", {Kind::Number}, [](const auto& it, const Arguments& arguments) {
         for (std::int32_t i = 1; i <= it->Count(); ++i) {
           if (auto slide = it->Item(i); slide->SlideID() == arguments.number(0)) return slide;
         }
         fakes::Fail("no slide of this id");
       })}};
  return type;
}

const Class<PowerPoint::Presentation>& presentationClass() {
  using Target = PowerPoint::Presentation;
  static const Class<Target> type{
      "Presentation",
      {get<Target>(L"FullName", [](const auto& it) { return it->FullName(); }),
       get<Target>(L"Saved", [](const auto& it) { return triState(it->Saved()); }),
       put<Target>(L"Saved", Kind::TriState,
                   [](const auto& it, const Arguments& arguments) { it->Saved(arguments.flag(0)); }),
       action<Target>(L"Save", [](const auto& it) { it->Save(); }),
       call<Target>(L"SaveCopyAs", {Kind::Text, optional(Kind::Number), optional(Kind::TriState)},
                    [](const auto& it, const Arguments& arguments) { it->SaveCopyAs(arguments.text(0)); }),
       action<Target>(L"Close", [](const auto& it) { it->Close(); }),
       get<Target>(L"Tags", [](const auto& it) { return it->Tags(); }),
       get<Target>(L"Slides", [](const auto& it) { return dispatchOf(it->Slides(), slidesClass()); }),
       get<Target>(L"SlideShowSettings", [](const auto& it) { return settingsOf(it); }),
       action<Target>(L"UpdateLinks", [](const auto& it) { it->UpdateLinks(); })}};
  return type;
}

const Class<AddInDesigner::AddIn>& addInClass() {
  using Target = AddInDesigner::AddIn;
  static const Class<Target> type{
      "COMAddIn", {get<Target>(L"ProgId", [](const auto& it) { return it->Property("ProgId"); })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Application>& target) {
  return dispatchOf(target, applicationClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Presentation>& target) {
  return dispatchOf(target, presentationClass());
}
Ptr<IDispatch> of(const std::shared_ptr<AddInDesigner::AddIn>& target) {
  return dispatchOf(target, addInClass());
}

}  // namespace strict
