#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/show/Freshness.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/ToldOnce.h"
#include "deck/objects/Presentation.h"
#include "deck/show/SlideShow.h"
#include "platform/EventLoop.h"
#include "render/conversion/PictureConverter.h"
#include "render/html/SlideRenderer.h"
#include "web/show/Server.h"
#include "web/show/Show.h"

namespace app {

struct LiveShowOptions {
  StaleData staleData = StaleData::Keep;
  /// The slide to show when every slide is hidden; nothing: the deck's background.
  std::optional<int> whenEmpty;
  /// When the show began that this one goes on with.
  std::optional<std::chrono::system_clock::time_point> began;
};

/// A running show between its three neighbours: what the deck reports as changed
/// is rendered and handed to the server, what screens and programs ask goes to
/// the show. Changes are collected and sent once the handler that made them is
/// done.
class LiveShow final : public web::Show, private deck::ChangeListener, private deck::SlideShowListener {
 public:
  /// `form` gives what drives the running show; null without one. `problems` hears what cannot be drawn, and
  /// outlives this object.
  LiveShow(deck::Application& application, std::shared_ptr<deck::Presentation> presentation,
           platform::EventLoop& loop, std::function<LF2000::FrmRuntimeTimer*()> form,
           const LiveShowOptions& options, ToldOnce& problems);
  ~LiveShow() override;
  LiveShow(const LiveShow&) = delete;
  LiveShow& operator=(const LiveShow&) = delete;

  /// Begins the show. `onEnd` is called once when it is over, however it ended.
  void begin(const deck::SlideShowOptions& options, std::function<void()> onEnd);
  /// Where changes go from now on; must outlive this object or be taken away (null).
  void connect(web::Server* server) { server_ = server; }
  /// How far the opening has come, for screens that wait for it; nothing when it is done.
  void progress(std::optional<web::Progress> progress);
  /// Ends the show and leaves the last picture standing on the screens.
  void shutDown();
  /// The same for a show that another one follows: it is not over, and `onEnd` not called. It can begin
  /// again.
  void leave();

  [[nodiscard]] bool isRunning() const { return show_ && show_->isRunning(); }
  /// Whether screens draw slides: it runs, or its last picture stands.
  [[nodiscard]] bool isOn() const { return isRunning() || standing_; }
  /// Where the running show stands.
  [[nodiscard]] deck::ShowPlace place() const { return show_->place(); }
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> began() const { return began_; }

  std::string stateJson() override;
  web::View view(std::optional<int> slide, std::string_view shape) override;
  web::ScreenState state(const web::View& view) override;
  void watch(const std::set<int>& slides) override;
  web::Health health() override;
  std::optional<web::Asset> asset(std::string_view name) override;
  web::Outcome next() override;
  web::Outcome previous() override;
  web::Outcome first() override;
  web::Outcome last() override;
  web::Outcome goTo(int slide) override;
  web::Outcome blank(web::Blank blank) override;
  web::Outcome end() override;

 private:
  void shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) override;
  void slideHiddenChanged(std::int32_t slideIndex) override;
  void linksUpdated() override;
  void slideChanged() override;
  void blankChanged() override;
  void buildChanged() override;
  void ended() override;

  /// What stays on the screens when the show is taken from under it.
  struct Standing {
    std::optional<int> current;
    std::optional<int> next;
    bool isEmpty = false;
  };
  void stand();
  web::Outcome command(const std::function<void()>& action);
  [[nodiscard]] std::optional<int> currentSlide() const;
  [[nodiscard]] std::optional<int> nextSlide() const;
  [[nodiscard]] bool isMirrored(int slide) const { return currentSlide() == slide || nextSlide() == slide; }
  [[nodiscard]] bool isHeld(int slide) const { return isMirrored(slide) || watched_.contains(slide); }
  [[nodiscard]] const LinkedShape* linkedShape(int slide, std::uint32_t id) const;
  /// Nothing where there is no text, or no value for it.
  [[nodiscard]] std::optional<std::string> textOf(int slide, const std::string& shapeName);
  web::SlideView page(int slide);
  render::SlidePage draw(int slide);
  std::string drawShape(int slide, std::uint32_t id);
  void showShape(const web::View& view, web::ScreenState& state);
  void showCurrent(web::ScreenState& state);
  void addStale(web::ScreenState& state, int slide) const;
  void addBuilds(web::ScreenState& state, int slide) const;
  void lookForStaleData();
  void lookForNewTime();
  void slideStateChanged();
  void wholeStateChanged();
  void watchConversions();
  void requestFlush();
  void flush();
  void sendShapes(web::Server::Time changed);

  std::shared_ptr<deck::Presentation> presentation_;
  deck::Application& application_;
  platform::EventLoop& loop_;
  render::PictureConverter converter_;
  std::unique_ptr<host::Timer> conversionTimer_;
  render::SlideRenderer renderer_;
  std::shared_ptr<deck::SlideShow> show_;
  web::Server* server_ = nullptr;
  std::function<void()> onEnd_;
  /// By slide, in drawing order; links do not change while a show runs.
  std::vector<std::vector<LinkedShape>> linked_;
  /// Pages that screens hold, as they stand now.
  std::map<int, std::string> pages_;
  /// Slides that show the date or the time, as met so far.
  std::map<int, render::TimeShown> timed_;
  /// When they were last known to be right.
  basic::Date timedAt_;
  std::set<int> watched_;
  std::function<LF2000::FrmRuntimeTimer*()> form_;
  Freshness freshness_;
  LiveShowOptions options_;
  std::unique_ptr<host::Timer> lookout_;
  std::optional<std::chrono::system_clock::time_point> began_;
  std::optional<web::Progress> progress_;
  /// Tells this version of the deck from others.
  std::string version_;
  bool hasRendered_ = false;
  ToldOnce& problems_;
  /// How far the slide on show was built up when it was last looked at.
  std::size_t builtBefore_ = 0;
  std::set<std::pair<int, std::uint32_t>> changedShapes_;
  /// What the screens that follow the show draw, and what all of them draw.
  bool slideStateChanged_ = false;
  bool wholeStateChanged_ = false;
  /// Of what is noted, the first.
  web::Server::Time changedAt_;
  bool flushRequested_ = false;
  std::optional<Standing> standing_;
  /// Lets a posted flush see that this object is gone.
  std::shared_ptr<LiveShow*> self_ = std::make_shared<LiveShow*>(this);
};

}  // namespace app
