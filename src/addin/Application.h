#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "addin/CommandBars.h"
#include "addin/support/modDebug.h"
#include "host/powerpoint.h"
#include "model/clsPresentation.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {

/// The central object: receives the host's application events, keeps one
/// clsPresentation per open presentation and the runtime of a running show.
class Application final : public PowerPoint::ApplicationEvents {
 public:
  Application() = default;
  ~Application() override;
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Subscribes to the host's events, checks the installation and puts the commands onto the host's bars.
  void InitHandler(const std::shared_ptr<PowerPoint::Application>& hostApplication,
                   const std::string& progId);
  void UnInitHandler();

  /// The entry of an open presentation; null without one.
  [[nodiscard]] std::shared_ptr<clsPresentation> Find(
      const std::shared_ptr<PowerPoint::Presentation>& presentation) const;

  /// Enables the commands for what is selected in the window in which the author works. Called by whoever
  /// changes what can be done there (modCommandState).
  void UpdateCommandState();

  /// The runtime of the running show; null between shows.
  [[nodiscard]] clsRuntime* Runtime() const { return runtime_.get(); }

  void NewPresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;
  void PresentationOpen(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;
  void PresentationClose(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;
  void PresentationSave(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;
  void SlideShowBegin(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) override;
  void SlideShowNextSlide(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) override;
  void SlideShowEnd(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;
  void WindowSelectionChange(const std::shared_ptr<PowerPoint::Selection>& selection) override;
  void WindowActivate(const std::shared_ptr<PowerPoint::Presentation>& presentation,
                      const std::shared_ptr<PowerPoint::DocumentWindow>& window) override;
  void PresentationPrint(const std::shared_ptr<PowerPoint::Presentation>& presentation) override;

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);
  /// Ends what a show does to its presentation: every slide is visible, saved is what was saved before.
  void GiveBack(const std::shared_ptr<PowerPoint::Presentation>& presentation);
  void BuildCommands();
  /// The entry of another version of the presentation that is still open; null without one.
  [[nodiscard]] std::shared_ptr<clsPresentation> FindVersion(
      const PowerPoint::Presentation& presentation) const;
  /// Shows the page that fits the selection beside the presentation, where the host has room for it.
  void DockPage(const std::shared_ptr<PowerPoint::Presentation>& presentation) const;

  std::shared_ptr<PowerPoint::Application> gppApp;
  std::string progId_;
  std::vector<std::shared_ptr<clsPresentation>> Presentations;
  std::shared_ptr<clsRuntime> runtime_;
  CommandBars commands_{[this] {
    return CommandSelection(*gppApp, [this](const auto& presentation) { return Find(presentation); });
  }};
};

}  // namespace LF2000
