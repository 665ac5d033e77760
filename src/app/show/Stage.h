#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/show/DeckWatch.h"
#include "app/show/LiveShow.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/LinkedSheets.h"
#include "platform/EventLoop.h"
#include "web/show/Server.h"
#include "web/show/Show.h"

namespace app {

/// What the screens look at: the live show of one deck, and then of another. In
/// a change the old show ends and the new one begins as any show does; the
/// screens keep the last picture until the first of the new one is drawn.
class Stage final : public web::Show {
 public:
  struct Options {
    LiveShowOptions live;
    std::optional<bool> kiosk;
    std::optional<bool> loop;
    /// Of slides without a timing.
    std::optional<double> seconds;
  };

  /// The host and the loop outlive it.
  Stage(AddInHost& host, platform::EventLoop& loop, std::shared_ptr<deck::Presentation> deck,
        const Options& options);

  ~Stage() override;
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  [[nodiscard]] const std::shared_ptr<deck::Presentation>& deck() const { return act_->deck; }
  /// How its shows are begun, wherever they begin.
  [[nodiscard]] deck::SlideShowOptions showOptions() const;

  /// Begins the show of the first deck. `onEnd` is called once when the last show is over, however it ended.
  void begin(std::optional<std::int32_t> startSlide, std::function<void()> onEnd);
  /// Puts another deck, or another version of the one on show, in its place. What the operator did stays: the
  /// slide on show is found again by its id (else the next one that is still there), the blank screen is
  /// blank. Throws basic::Error when that deck cannot be shown, and the old one goes on. Once the show is
  /// over nothing happens.
  void change(DeckVersion version);
  /// Where changes go from now on; must outlive this object or be taken away (null).
  void connect(web::Server* server);
  void progress(std::optional<web::Progress> progress) { act_->live.progress(std::move(progress)); }
  /// Ends the show and leaves the last picture standing on the screens.
  void shutDown();

  std::string stateJson() override { return act_->live.stateJson(); }
  web::View view(std::optional<int> slide, std::string_view shape) override {
    return act_->live.view(slide, shape);
  }
  web::ScreenState state(const web::View& view) override { return act_->live.state(view); }
  void watch(const std::set<int>& slides) override { act_->live.watch(slides); }
  web::Health health() override { return act_->live.health(); }
  /// Those of the deck before as well, for a minute: a screen may be about to ask for one.
  std::optional<web::Asset> asset(std::string_view name) override;
  web::Outcome next() override;
  web::Outcome previous() override;
  web::Outcome first() override;
  web::Outcome last() override;
  web::Outcome goTo(int slide) override;
  web::Outcome blank(web::Blank blank) override;
  web::Outcome end() override;

 private:
  /// A deck with its show.
  struct Act {
    Act(AddInHost& host, platform::EventLoop& loop, std::shared_ptr<deck::Presentation> shown,
        const LiveShowOptions& options, ToldOnce& problems);

    std::shared_ptr<deck::Presentation> deck;
    LinkedSheets sheets;
    LiveShow live;
  };
  using Command = std::function<web::Outcome(ShowControls)>;

  [[nodiscard]] std::unique_ptr<Act> act(std::shared_ptr<deck::Presentation> deck);
  void changeTo(std::unique_ptr<Act> next);
  void beginAct(Act& act, const deck::SlideShowOptions& options);
  void forget(std::unique_ptr<Act> act);
  web::Outcome command(Command command);

  AddInHost& host_;
  platform::EventLoop& loop_;
  Options options_;
  /// Of all decks, as versions of one have their faults in common.
  ToldOnce problems_;
  std::unique_ptr<Act> act_;
  /// The last one, for its pictures.
  std::unique_ptr<Act> before_;
  /// Those of which something may still be on the stack: a handler that waits while the decks change.
  std::vector<std::unique_ptr<Act>> past_;
  std::unique_ptr<host::Timer> forgetting_;
  std::function<void()> onEnd_;
  web::Server* server_ = nullptr;
  bool isChanging_ = false;
  /// The old show has ended and the new one has not begun: commands wait.
  bool isBetween_ = false;
  bool isShutDown_ = false;
  std::vector<Command> waiting_;
  /// What came in during a change; the newest alone.
  std::optional<DeckVersion> newest_;
  /// Lets what was posted see that this object is gone.
  std::shared_ptr<Stage*> self_;
};

}  // namespace app
