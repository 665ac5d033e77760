#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "app/show/ChangeFlush.h"
#include "app/show/ShowControls.h"
#include "app/show/SlidePages.h"
#include "app/show/StaleValues.h"
#include "app/wiring/ToldOnce.h"
#include "deck/objects/Presentation.h"
#include "deck/show/SlideShow.h"
#include "platform/EventLoop.h"
#include "web/show/Server.h"
#include "web/show/Show.h"

namespace app {

/// From a change of the show to the moment at which screens show it together: they have it by then, over the
/// networks between, and have drawn it out of sight.
inline constexpr std::chrono::milliseconds TimeToPrepare{500};

struct LiveShowOptions {
  StaleData staleData = StaleData::Keep;
  /// The slide to show when every slide is hidden; nothing: the deck's background.
  std::optional<int> whenEmpty;
  /// When the show began that this one goes on with.
  std::optional<std::chrono::system_clock::time_point> began;
  /// When screens show what the show does now; without it each shows it as soon as it can.
  std::function<std::chrono::system_clock::time_point()> moment = {};
};

/// The running show of one deck, between its three neighbours: what the deck and the show report as changed
/// is drawn (SlidePages) and handed to the server once the handler that changed it is done (ChangeFlush);
/// what screens and programs ask about it is answered here, and what an operator does goes to ShowControls.
class LiveShow final : private deck::ChangeListener, private deck::SlideShowListener {
 public:
  /// `form` gives what drives the running show; null without one. `problems` hears what cannot be drawn. The
  /// application, the loop and `problems` outlive this object.
  LiveShow(deck::Application& application, std::shared_ptr<deck::Presentation> presentation,
           platform::EventLoop& loop, std::function<LF2000::FrmRuntimeTimer*()> form,
           const LiveShowOptions& options, ToldOnce& problems);
  ~LiveShow() override;
  LiveShow(const LiveShow&) = delete;
  LiveShow& operator=(const LiveShow&) = delete;

  /// Begins the show. `onEnd` is called once from the loop when it is over, however it ended. Throws
  /// basic::Error when the show cannot begin. `wentThrough` as deck::SlideShowListener::wentThrough.
  void begin(const deck::SlideShowOptions& options, std::function<void()> onEnd,
             std::function<bool()> wentThrough = {});
  /// Where changes go from now on; must outlive this object or be taken away (null).
  void connect(web::Server* server) { server_ = server; }
  /// How far the opening has come, for screens that wait for it; nothing when it is done.
  void progress(std::optional<web::Progress> progress);
  /// Ends the show and leaves the last picture standing on the screens.
  void shutDown();
  /// The same for a running show that another one follows: it is not over, and `onEnd` not called. It can
  /// begin again.
  void leave();

  [[nodiscard]] bool isRunning() const { return show_ && show_->isRunning(); }
  /// Whether screens draw slides: it runs, or its last picture stands.
  [[nodiscard]] bool isOn() const { return isRunning() || standing_; }
  /// Whether none of its slides is to be seen, once it has begun.
  [[nodiscard]] bool isEmpty() const { return show_->isEmpty(); }
  /// Where the show stands, once it has begun.
  [[nodiscard]] deck::ShowPlace place() const { return show_->place(); }
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> began() const { return options_.began; }
  /// Of the show as it runs now.
  [[nodiscard]] ShowControls controls() { return ShowControls(show_); }
  /// See deck::SlideShow::moveTo; once it has begun.
  void moveTo(std::size_t place) { show_->moveTo(place); }

  // What web::Show asks.
  std::string stateJson();
  [[nodiscard]] web::View view(std::optional<int> slide, std::string_view shape) const {
    return pages_.view(slide, shape);
  }
  web::ScreenState state(const web::View& view);
  void watch(const std::set<int>& slides);
  [[nodiscard]] web::Health health() const;
  [[nodiscard]] std::optional<web::Asset> asset(std::string_view name) const { return pages_.asset(name); }

 private:
  void shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) override;
  void cellChanged(std::int32_t slideIndex, std::uint32_t shapeId, std::int32_t row,
                   std::int32_t column) override;
  void slideHiddenChanged(std::int32_t slideIndex) override;
  void linksUpdated() override;
  void slideChanged() override;
  void blankChanged() override;
  void buildChanged() override;
  void ended() override;
  bool wentThrough() override { return wentThrough_ && wentThrough_(); }

  /// What stays on the screens when the show is taken from under it.
  struct Standing {
    std::optional<int> current;
    std::optional<int> next;
    bool isEmpty = false;
  };
  void setMoment();
  void stand();
  [[nodiscard]] std::optional<int> currentSlide() const;
  [[nodiscard]] std::optional<int> nextSlide() const;
  [[nodiscard]] bool isMirrored(int slide) const { return currentSlide() == slide || nextSlide() == slide; }
  [[nodiscard]] bool isHeld(int slide) const { return isMirrored(slide) || watched_.contains(slide); }
  /// Nothing where there is no text, or no value for it.
  [[nodiscard]] std::optional<std::string> textOf(int slide, const std::string& shapeName) const;
  void showCurrent(web::ScreenState& state);
  void addBuilds(web::ScreenState& state, int slide) const;
  void lookAround();
  void flush(const ChangeFlush::Changes& changes);
  void sendShapes(const ChangeFlush::Changes& changes);

  std::shared_ptr<deck::Presentation> presentation_;
  deck::Application& application_;
  platform::EventLoop& loop_;
  std::function<LF2000::FrmRuntimeTimer*()> form_;
  LiveShowOptions options_;
  ToldOnce& problems_;
  /// Tells this version of the deck from others.
  std::string version_;
  ChangeFlush changes_;
  SlidePages pages_;
  StaleValues stale_;
  std::unique_ptr<host::Timer> lookout_;
  std::shared_ptr<deck::SlideShow> show_;
  web::Server* server_ = nullptr;
  std::function<void()> onEnd_;
  std::function<bool()> wentThrough_;
  std::set<int> watched_;
  std::optional<web::Progress> progress_;
  /// How far the slide on show was built up when it was last looked at.
  std::size_t builtBefore_ = 0;
  std::optional<std::chrono::system_clock::time_point> shownAt_;
  std::optional<Standing> standing_;
};

}  // namespace app
