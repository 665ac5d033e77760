#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/addin.h"
#include "host/powerpoint.h"
#include "windows/automation/Presentation.h"
#include "windows/com/Events.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// The presentation program. Its events come as long as somebody has subscribed.
class Application final : public PowerPoint::Application {
 public:
  /// Hears what is of interest to programmers alone.
  using Note = std::function<void(const std::string& text)>;

  Application(const com::Ptr<IDispatch>& application, Note note);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  ~Application() override { events_.end(); }

  [[nodiscard]] std::string Version() const override { return application_.text(L"Version"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Presentations> Presentations() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::DocumentWindow> ActiveWindow() override;
  [[nodiscard]] std::shared_ptr<Office::CommandBars> CommandBars() override;
  void StartNewUndoEntry(std::string_view label, std::string_view run) override;
  /// Where the program raises no events that are known here, that is noted.
  void Advise(PowerPoint::ApplicationEvents* sink) override;

 private:
  void raise(const com::Event& event);
  void save(const std::shared_ptr<Presentation>& presentation);

  com::Object application_;
  Note note_;
  std::shared_ptr<KnownPresentations> known_ = std::make_shared<KnownPresentations>();
  PowerPoint::ApplicationEvents* sink_ = nullptr;
  com::Subscription events_;
  /// The one that is being saved by a handler of that event.
  const Presentation* beingSaved_ = nullptr;
  std::string run_;
};

/// The add-in's entry in the host's list.
class AddIn final : public AddInDesigner::AddIn {
 public:
  explicit AddIn(const com::Ptr<IDispatch>& addIn);
  [[nodiscard]] basic::Variant Property(std::string_view name) const override;

 private:
  com::Object addIn_;
};

}  // namespace windows::automation
