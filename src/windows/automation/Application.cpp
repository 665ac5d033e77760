// The presentation program and its events.

#include "windows/automation/Application.h"

#include <utility>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "windows/automation/Classes.h"
#include "windows/automation/CommandBars.h"
#include "windows/automation/EditWindow.h"
#include "windows/automation/Optional.h"
#include "windows/automation/SlideShow.h"
#include "windows/automation/TriState.h"
#include "windows/com/Text.h"

namespace windows::automation {
namespace {

/// EApplication, the events of PowerPoint.Application.
constexpr IID ApplicationEvents = {
    0x914934C2, 0x5A91, 0x11CF, {0x87, 0x00, 0x00, 0xAA, 0x00, 0x60, 0x26, 0x3B}};

/// Its members, as far as used.
enum EventId : DISPID {
  WindowSelectionChange = 2001,
  PresentationClose = 2004,
  PresentationSave = 2005,
  PresentationOpen = 2006,
  NewPresentation = 2007,
  WindowActivate = 2009,
  SlideShowBegin = 2011,
  SlideShowNextSlide = 2013,
  SlideShowEnd = 2014,
  PresentationPrint = 2015,
};

class Presentations final : public PowerPoint::Presentations {
 public:
  Presentations(com::Object presentations, std::shared_ptr<KnownPresentations> known)
      : presentations_(std::move(presentations)), known_(std::move(known)) {}
  [[nodiscard]] std::int32_t Count() const override { return presentations_.number(L"Count"); }
  std::shared_ptr<PowerPoint::Presentation> Open(std::string_view fileName) override {
    for (std::int32_t i = 1; i <= Count(); ++i) {
      const com::Object open = presentations_.object(classes::Presentation, L"Item", i);
      if (basic::EqualsIgnoreCase(open.text(L"FullName"), fileName)) return known_->of(open.dispatch());
    }
    // FileName, ReadOnly, Untitled, WithWindow
    return known_->of(
        presentations_.call(L"Open", fileName, triState(false), triState(false), triState(false)).object());
  }

 private:
  com::Object presentations_;
  std::shared_ptr<KnownPresentations> known_;
};

}  // namespace

Application::Application(const com::Ptr<IDispatch>& application, Note note)
    : application_(application, classes::Application), note_(std::move(note)) {}

std::shared_ptr<PowerPoint::Presentations> Application::Presentations() {
  return std::make_shared<automation::Presentations>(
      application_.object(classes::Presentations, L"Presentations"), known_);
}

std::shared_ptr<PowerPoint::DocumentWindow> Application::ActiveWindow() {
  com::Ptr<IDispatch> window;
  try {
    window = application_.get(L"ActiveWindow").object();
  } catch (const basic::Error&) {
    return nullptr;  // what the object model says when there is none
  }
  if (!window) return nullptr;
  return std::make_shared<DocumentWindow>(com::Object(std::move(window), classes::DocumentWindow), known_);
}

std::shared_ptr<Office::CommandBars> Application::CommandBars() {
  return commandBars(application_.get(L"CommandBars").object());
}

void Application::StartNewUndoEntry(std::string_view, std::string_view run) {
  const bool goesOn = !run.empty() && run == run_;
  run_ = run;
  if (goesOn) return;
  // Not before version 14.
  whereThere(
      [this] {
        application_.call(L"StartNewUndoEntry");
        return true;
      },
      false);
}

void Application::Advise(PowerPoint::ApplicationEvents* sink) {
  events_.end();
  sink_ = sink;
  if (sink == nullptr) return;
  try {
    events_ = com::Subscription(application_.dispatch(), ApplicationEvents,
                                [this](const com::Event& event) { raise(event); });
  } catch (const basic::Error& error) {
    note_("No events of the presentation program: " + error.description);
  }
}

void Application::raise(const com::Event& event) {
  // Other handlers may end the subscription, and this object with it, while one is waiting.
  PowerPoint::ApplicationEvents& sink = *sink_;
  const auto presentation = [&] { return known_->of(event.object(0)); };
  const auto window = [&] {
    return std::make_shared<SlideShowWindow>(com::Object(event.object(0), classes::SlideShowWindow), known_);
  };
  switch (event.id()) {
    case WindowSelectionChange: {
      const auto active = ActiveWindow();
      return sink.WindowSelectionChange(active ? active->Selection() : nullptr);
    }
    case PresentationClose:
      return sink.PresentationClose(presentation());
    case PresentationSave:
      return save(presentation());
    case PresentationOpen:
      return sink.PresentationOpen(presentation());
    case NewPresentation:
      return sink.NewPresentation(presentation());
    case WindowActivate:
      return sink.WindowActivate(
          presentation(),
          std::make_shared<DocumentWindow>(com::Object(event.object(1), classes::DocumentWindow), known_));
    case SlideShowBegin:
      return sink.SlideShowBegin(window());
    case SlideShowNextSlide:
      return sink.SlideShowNextSlide(window());
    case SlideShowEnd:
      return sink.SlideShowEnd(presentation());
    case PresentationPrint:
      return sink.PresentationPrint(presentation());
    default:
      return;
  }
}

/// The handler saves as well, which raises the event again.
void Application::save(const std::shared_ptr<Presentation>& presentation) {
  if (presentation.get() == beingSaved_) return;
  beingSaved_ = presentation.get();
  sink_->PresentationSave(presentation);
  beingSaved_ = nullptr;
}

AddIn::AddIn(const com::Ptr<IDispatch>& addIn) : addIn_(addIn, classes::AddIn) {}

basic::Variant AddIn::Property(std::string_view name) const {
  return addIn_.get(com::wide(name).c_str()).value();
}

}  // namespace windows::automation
