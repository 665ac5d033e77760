#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "web/http/Channel.h"
#include "web/http/Connection.h"
#include "web/http/Options.h"
#include "web/publish/Publisher.h"
#include "web/show/Screens.h"
#include "web/show/Show.h"
#include "web/show/ViewChannel.h"
#include "web/show/ViewsInUse.h"

namespace web {

/// The channels, what goes onto them, and their heartbeat: one channel for programs
/// and one for each view that a screen looks at, so that screens with the same view
/// share what is built for them. What screens look at over hubs goes there as well. It runs on the loop's
/// thread alone.
class Broadcast : public std::enable_shared_from_this<Broadcast> {
 public:
  using Time = Channel::Time;

  /// All outlive it or its close(). Without nodes of a hub nothing is published.
  Broadcast(boost::asio::io_context& loop, Show& show, const Options& options, PublisherOptions hub = {});

  /// Begins the heartbeat. What follows the show is published from then on: screens at hubs may have been
  /// there before.
  void start();
  /// Each begins with the whole state. A failure of the show ends the stream and is reported to
  /// Options::onError. `visitor` is who looks, where screens are known.
  void openScreen(Connection connection, const View& view, const KnownScreen& visitor = {});
  /// Follows the show as a screen does, but is not one: it reports nothing and is not counted.
  void openRemote(Connection connection, const KnownScreen& visitor = {});
  void openProgram(Connection connection, const KnownScreen& visitor = {});
  /// Others may be known now (Options::screens): cuts the streams of who may not look any more.
  void screensChanged();

  // As Server's; `changed` is when the cause happened.

  void slideChanged(Time changed);
  void stateChanged(Time changed);
  void deckChanged(Time changed);
  void shapesChanged(const std::vector<ShapeChange>& changes, Time changed);
  /// Ends all streams; those that are not through by Options::stopTimeout are cut.
  void stop();
  /// Cuts all streams; nothing is called afterwards.
  void close();

  enum class Reported { Done, UnknownScreen, TooOften };
  /// What a screen at a hub looks at is in use from then on.
  Reported painted(const ScreenReport& report, const KnownScreen& visitor = {});
  /// The whole state of a view, by its name, which is in use from then on (docs/hubs.md); nothing when too
  /// many are, and when the show fails.
  std::optional<std::string> stateText(const std::string& name);

  /// Open streams of screens, and of programs.
  [[nodiscard]] std::size_t screens() const { return book_.withStream(); }
  [[nodiscard]] std::size_t programs() const { return programs_.size(); }
  [[nodiscard]] const Screens& screenBook() const { return book_; }
  /// Views that are published.
  [[nodiscard]] std::size_t viewsAtHubs() const { return uses_.size(); }
  /// Null without a hub.
  [[nodiscard]] const Publisher* publisher() const { return publisher_.get(); }
  /// The number of the newest event of a view; 0 when nobody looks at it.
  [[nodiscard]] std::uint64_t newest(const View& view) const;
  /// When the cause of an event of a view happened; nothing when that is too long ago to be known.
  [[nodiscard]] std::optional<Time> changedAt(const View& view, std::uint64_t sequence) const;

 private:
  /// `name` is that of the stream: the screen's secret one, else the visitor's key.
  void openOn(const View& view, Connection connection, const std::string& name, bool isScreen);
  void expectScreens();
  ViewChannel& channelOf(const View& view);
  [[nodiscard]] bool isLookedAt(const View& view, const ViewChannel& channel) const {
    return channel.streams().size() > 0 || uses_.shows(view);
  }
  /// False when too many views are in use, or none is published.
  bool use(const std::string& name);
  void dropUnusedChannels();
  void watchSlides();
  void publish(const ScreenState& state, const View& view, ViewChannel& channel, Time changed);
  void publish(std::string_view event, const ViewChannel::Data& data, const View& view, ViewChannel& channel,
               Time changed);
  std::optional<std::string> pictureForHubs(const std::string& name);
  void beatLater();
  void beat();
  void beatAtHubs();
  /// Runs `build`; a failure of the show is reported and gives null.
  template <typename Build>
  auto guarded(const Build& build) const -> decltype(build());

  Show& show_;
  const Options& options_;
  boost::asio::steady_timer heart_;
  Screens book_;
  std::map<View, ViewChannel> views_;
  ViewsInUse uses_;
  std::unique_ptr<Publisher> publisher_;
  Channel programs_;
  std::set<int> watched_;
  /// Programs have been told that the show is over.
  bool ended_ = false;
  bool stopped_ = false;
};

}  // namespace web
