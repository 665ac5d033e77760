#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "deck/bars/CommandBars.h"
#include "deck/objects/DocumentWindow.h"
#include "deck/objects/Presentation.h"

namespace deck {

/// The presentation host: what is open, and whom it tells.
class Application final : public PowerPoint::Application, public std::enable_shared_from_this<Application> {
 public:
  ~Application() override;

  /// Version of the object model that the system is written against.
  [[nodiscard]] std::string Version() const override { return "9.0.2716"; }
  [[nodiscard]] std::shared_ptr<PowerPoint::Presentations> Presentations() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::DocumentWindow> ActiveWindow() override { return window_; }
  [[nodiscard]] std::shared_ptr<Office::CommandBars> CommandBars() override { return bars_; }
  void StartNewUndoEntry(std::string_view label, std::string_view run) override {
    if (undoEntryStarted_) undoEntryStarted_(label, run);
  }
  void Advise(PowerPoint::ApplicationEvents* sink) override { sink_ = sink; }

  /// What becomes of a deck that is not whole: Repaired shows what can be read of it (see repair()), and the
  /// presentation cannot be saved.
  enum class Damaged { Refused, Repaired };

  /// Opens a deck and raises PresentationOpen. A deck that is open already is
  /// handed out again, without an event. Throws basic::Error when it cannot be
  /// opened.
  std::shared_ptr<Presentation> open(const std::string& path, Damaged damaged = Damaged::Refused);
  /// Takes a version of a deck that was read already from the file of the package's name, though another
  /// version may be open, and raises PresentationOpen.
  std::shared_ptr<Presentation> open(std::unique_ptr<opc::Package> package, const opc::FileState& state);
  /// The same with a presentation that was made of such a version, and perhaps edited already.
  std::shared_ptr<Presentation> open(std::shared_ptr<Presentation> version) {
    return announce(std::move(version));
  }
  /// Takes a package that is no file yet and raises NewPresentation.
  std::shared_ptr<Presentation> add(std::unique_ptr<opc::Package> package);
  /// Raises PresentationClose, then forgets the presentation. What was not saved
  /// is lost. Closing one that is not open does nothing.
  void close(const std::shared_ptr<PowerPoint::Presentation>& presentation);
  [[nodiscard]] const std::vector<std::shared_ptr<Presentation>>& openPresentations() const { return open_; }

  /// What shows the bars reads them here.
  [[nodiscard]] deck::CommandBars& bars() { return *bars_; }
  /// Who keeps the steps that can be undone hears where one begins.
  void onUndoEntry(std::function<void(std::string_view label, std::string_view run)> started) {
    undoEntryStarted_ = std::move(started);
  }
  /// Called with the path of every linked picture before it is read; what it throws is why it is not. An
  /// empty one ends that.
  void guardLinks(std::function<void(const std::string& path)> guard) { linkGuard_ = std::move(guard); }
  void requireReadable(const std::string& linkedPicture) const {
    if (linkGuard_) linkGuard_(linkedPicture);
  }
  /// The author goes on in this window; null when the last one has been closed. Raises WindowActivate when it
  /// was another one before.
  void activate(const std::shared_ptr<DocumentWindow>& window);
  /// Selects in a window (see DocumentWindow::select), and raises WindowSelectionChange when that is another
  /// selection than before.
  void select(DocumentWindow& window, std::int32_t slide, std::vector<std::uint32_t> shapes);

  /// Raises an event, if somebody listens.
  template <typename Argument>
  void raise(void (PowerPoint::ApplicationEvents::*event)(const std::shared_ptr<Argument>&),
             const std::shared_ptr<Argument>& argument) {
    if (sink_ != nullptr) (sink_->*event)(argument);
  }

 private:
  std::shared_ptr<Presentation> announce(std::shared_ptr<Presentation> opened);
  std::shared_ptr<Presentation> keep(std::shared_ptr<Presentation> presentation);

  std::vector<std::shared_ptr<Presentation>> open_;
  PowerPoint::ApplicationEvents* sink_ = nullptr;
  std::shared_ptr<DocumentWindow> window_;
  std::shared_ptr<deck::CommandBars> bars_ = deck::CommandBars::create();
  std::function<void(std::string_view, std::string_view)> undoEntryStarted_;
  std::function<void(const std::string&)> linkGuard_;
};

}  // namespace deck
