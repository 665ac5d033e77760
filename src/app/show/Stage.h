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
#include "app/show/Programme.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/LinkedSheets.h"
#include "platform/EventLoop.h"
#include "web/show/Server.h"
#include "web/show/Show.h"

namespace app {

/// What the screens look at: the live show of one deck, and then of another. In
/// a change the old show ends and the new one begins as any show does; the
/// screens keep the last picture until the first of the new one is drawn. While no
/// deck is on it, it is a plain ground.
class Stage final : public web::Show {
 public:
  struct Options {
    LiveShowOptions live;
    std::optional<bool> kiosk;
    std::optional<bool> loop;
    /// Of slides without a timing.
    std::optional<double> seconds;
  };

  /// Without a deck it begins as a plain ground. The host, the loop and the programme, if there is one,
  /// outlive it.
  Stage(AddInHost& host, platform::EventLoop& loop, std::shared_ptr<deck::Presentation> deck, Options options,
        Programme* programme = nullptr);

  ~Stage() override;
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  /// Null on a plain ground.
  [[nodiscard]] std::shared_ptr<deck::Presentation> deck() const { return act_ ? act_->deck : nullptr; }
  /// Where its show stands; nothing on a plain ground, and when it is over.
  [[nodiscard]] std::optional<deck::ShowPlace> place() const;
  /// A deck is on it, and none of its slides is to be seen.
  [[nodiscard]] bool isEmpty() const;
  /// How its shows are begun, wherever they begin.
  [[nodiscard]] deck::SlideShowOptions showOptions() const;

  /// How shows begin from now on; the present one goes on as it was begun.
  void use(Options options);

  /// Begins the show of the first deck, if there is one. `onEnd` is called once when the last show is over,
  /// however it ended.
  void begin(std::optional<std::int32_t> startSlide, std::function<void()> onEnd);
  /// Puts another deck, or another version of the one on show, in its place. What the operator did stays: the
  /// slide on show is found again by its id (else the next one that is still there), the blank screen is
  /// blank. Throws basic::Error when that deck cannot be shown, and the old one goes on. Once the show is
  /// over nothing happens.
  void change(DeckVersion version);
  /// Another open deck takes the stage and begins as `show` says, or, when it `goesOn` as a version of the
  /// one before, where that stands. A blank screen stays. Throws basic::Error when it cannot, or when none of
  /// its slides is to be seen: it is closed, and the old one goes on. Not to be called in a change.
  void follow(const std::shared_ptr<deck::Presentation>& deck, deck::SlideShowOptions show, bool goesOn);
  /// The stage becomes a plain ground. Not to be called in a change.
  void clear();
  /// See deck::SlideShow::moveTo.
  void moveTo(std::size_t place);
  /// Where changes go from now on; must outlive this object or be taken away (null).
  void connect(web::Server* server);
  void progress(std::optional<web::Progress> progress);
  /// Ends the show and leaves the last picture standing on the screens.
  void shutDown();

  std::string stateJson() override;
  web::View view(std::optional<int> slide, std::string_view shape) override;
  web::ScreenState state(const web::View& view) override;
  void watch(const std::set<int>& slides) override;
  web::Health health() override;
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
    /// How its show began.
    deck::SlideShowOptions begun;
  };
  using Command = std::function<web::Outcome(ShowControls)>;

  [[nodiscard]] std::unique_ptr<Act> act(std::shared_ptr<deck::Presentation> deck);
  [[nodiscard]] bool isOn() const { return isGround() ? !isOver_ : act_->live.isRunning(); }
  [[nodiscard]] bool isGround() const { return !act_; }
  void carryOut(const std::function<void()>& change);
  void changeTo(const std::shared_ptr<deck::Presentation>& deck, deck::SlideShowOptions show,
                bool showsSomething);
  void swap(std::unique_ptr<Act> next);
  void beginAct(Act& act, const deck::SlideShowOptions& options);
  void forget(std::unique_ptr<Act> act);
  void endGround();
  web::Outcome command(Command command);
  web::Outcome steer(Command command);

  AddInHost& host_;
  platform::EventLoop& loop_;
  Options options_;
  Programme* programme_;
  /// Of all decks, as versions of one have their faults in common.
  ToldOnce problems_;
  /// Null on a plain ground.
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
  /// An operator ended it, or it was shut down, while it was a plain ground.
  bool isOver_ = false;
  std::vector<Command> waiting_;
  /// What came in during a change; the newest alone.
  std::optional<DeckVersion> newest_;
  /// Lets what was posted see that this object is gone.
  std::shared_ptr<Stage*> self_;
};

}  // namespace app
