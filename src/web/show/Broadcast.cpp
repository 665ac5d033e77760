// Who hears what: each change goes onto the channels of the views that it touches.
#include "web/show/Broadcast.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "web/show/ClientFiles.h"
#include "web/show/Messages.h"
#include "web/show/ViewName.h"

namespace web {

using boost::system::error_code;

namespace {

bool isSeen(const ShapeChange& change, const View& view) {
  if (change.html.empty() && change.cells.empty()) return false;
  switch (view.kind) {
    case View::Kind::Show:
      return change.isMirrored;
    case View::Kind::Slide:
      return change.slide == view.slide;
    case View::Kind::Shape:
      break;
  }
  return change.slide == view.slide && change.elementId == view.elementId;
}

}  // namespace

Broadcast::Broadcast(boost::asio::io_context& loop, Show& show, const Options& options, PublisherOptions hub)
    : show_(show),
      options_(options),
      heart_(loop),
      book_(options.now),
      programs_([this](std::uint64_t sequence) {
        return guarded([&] { return stateMessage(sequence, show_.stateJson()); });
      }) {
  expectScreens();
  if (hub.nodes.empty()) return;
  publisher_ = std::make_unique<Publisher>(loop, std::move(hub),
                                           [this](const std::string& name) { return pictureForHubs(name); });
}

void Broadcast::start() {
  beatLater();
  if (publisher_) use(viewName({}));
}

void Broadcast::beatLater() {
  heart_.expires_after(options_.heartbeat);
  heart_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled && !self->stopped_) self->beat();
  });
}

void Broadcast::beat() {
  beatLater();
  static const SharedMessage visible = heartbeatMessage(true);
  static const SharedMessage silent = heartbeatMessage(false);
  for (auto& [view, channel] : views_) channel.streams().send(visible);
  programs_.send(silent);
  if (publisher_) beatAtHubs();
  dropUnusedChannels();
}

void Broadcast::beatAtHubs() {
  book_.expire();
  for (const std::string& gone : uses_.expire(options_.now())) publisher_->forget(gone);
  for (const std::string& name : uses_.names()) {
    publisher_->beat(name, channelOf(*uses_.find(name)).beatForHubs());
  }
}

void Broadcast::openScreen(Connection connection, const View& view, const KnownScreen& visitor) {
  openOn(view, std::move(connection), book_.add(view, visitor), true);
}

void Broadcast::openRemote(Connection connection, const KnownScreen& visitor) {
  openOn(View{}, std::move(connection), visitor.key, false);
}

void Broadcast::openProgram(Connection connection, const KnownScreen& visitor) {
  programs_.open(std::move(connection), options_, visitor.key);
}

void Broadcast::openOn(const View& view, Connection connection, const std::string& name, bool isScreen) {
  dropUnusedChannels();
  Channel& streams = channelOf(view).streams();
  watchSlides();
  streams.open(std::move(connection), options_, name,
               greetingMessage(isScreen ? std::optional(name) : std::nullopt));
}

void Broadcast::expectScreens() {
  if (options_.screens == nullptr) return;
  book_.expect(options_.screens->names(),
               [this](const std::string& key) { return options_.screens->nameOf(key); });
}

void Broadcast::screensChanged() {
  if (stopped_ || options_.screens == nullptr) return;
  const auto isGone = [this](const std::string& stream) {
    const Screens::Screen* screen = book_.find(stream);
    const std::string& key = screen != nullptr ? screen->known.key : stream;
    return !key.empty() && !options_.screens->nameOf(key);
  };
  for (auto& [view, channel] : views_) channel.streams().dismiss(isGone);
  programs_.dismiss(isGone);
  dropUnusedChannels();
  expectScreens();
}

ViewChannel& Broadcast::channelOf(const View& view) {
  return views_
      .try_emplace(
          view,
          [this, view] {
            return guarded([&] {
              return std::make_shared<const std::string>(
                  pictureData(show_.state(view), clientVersion(), options_.heartbeat));
            });
          },
          [this](const std::string& screen) { book_.remove(screen); })
      .first->second;
}

bool Broadcast::use(const std::string& name) {
  const auto address = viewNamed(name);
  if (!publisher_ || !address) return false;
  const bool isNew = !uses_.contains(name);
  const View view = viewAt(show_, *address);
  if (!uses_.use(name, view, options_.now())) return false;
  const ViewChannel& channel = channelOf(view);
  if (!isNew) return true;
  watchSlides();
  // The hub has an id for it then, from which screens go on.
  publisher_->beat(name, channel.beatForHubs());
  return true;
}

/// Not when the last stream leaves: the channel is at work then.
void Broadcast::dropUnusedChannels() {
  std::erase_if(views_, [this](const auto& entry) { return !isLookedAt(entry.first, entry.second); });
  watchSlides();
}

void Broadcast::watchSlides() {
  std::set<int> slides;
  for (const auto& [view, channel] : views_) {
    if (view.slide > 0) slides.insert(view.slide);
  }
  if (slides == watched_) return;
  watched_ = std::move(slides);
  show_.watch(watched_);
}

void Broadcast::publish(const ScreenState& state, const View& view, ViewChannel& channel, Time changed) {
  publish(
      "picture", [&] { return pictureData(state, clientVersion(), options_.heartbeat); }, view, channel,
      changed);
}

void Broadcast::publish(std::string_view event, const ViewChannel::Data& data, const View& view,
                        ViewChannel& channel, Time changed) {
  const std::vector<std::string> names = uses_.namesOf(view);
  const auto hubs = [&](const std::string& message) {
    for (const std::string& name : names) publisher_->publish(name, message);
  };
  if (names.empty()) {
    channel.publish(event, data, changed, {});
  } else {
    channel.publish(event, data, changed, hubs);
  }
}

void Broadcast::slideChanged(Time changed) {
  if (stopped_) return;
  const ScreenState state = show_.state(View{});
  const auto screens = views_.find(View{});
  if (screens != views_.end()) publish(state, View{}, screens->second, changed);
  programs_.publish([&](std::uint64_t sequence) { return positionMessage(sequence, state); }, changed);
  if (state.ended && !ended_) {
    programs_.publish([](std::uint64_t sequence) { return endMessage(sequence, "show"); }, changed);
  }
  ended_ = state.ended;
}

void Broadcast::stateChanged(Time changed) {
  if (stopped_) return;
  slideChanged(changed);
  for (auto& [view, channel] : views_) {
    // The last screen may have left it.
    if (view.kind == View::Kind::Show || !isLookedAt(view, channel)) continue;
    publish(show_.state(view), view, channel, changed);
  }
}

/// Slides and shapes that views name may be others now, or gone.
void Broadcast::deckChanged(Time changed) {
  if (stopped_) return;
  for (auto& [view, channel] : views_) {
    if (view.kind != View::Kind::Show) channel.streams().dismiss();
  }
  uses_.resolve([this](const std::string& name) { return viewAt(show_, *viewNamed(name)); });
  for (const std::string& name : uses_.names()) channelOf(*uses_.find(name));
  dropUnusedChannels();
  programs_.publish([&](std::uint64_t sequence) { return stateMessage(sequence, show_.stateJson()); },
                    changed);
  stateChanged(changed);
}

void Broadcast::shapesChanged(const std::vector<ShapeChange>& changes, Time changed) {
  if (stopped_ || changes.empty()) return;
  for (auto& [view, channel] : views_) {
    const auto isShown = [&view = view](const ShapeChange& change) { return isSeen(change, view); };
    if (std::none_of(changes.begin(), changes.end(), isShown)) continue;
    publish(
        "shapes", [&] { return shapesData(changes, isShown); }, view, channel, changed);
  }
  programs_.publish([&](std::uint64_t sequence) { return valuesMessage(sequence, changes); }, changed);
}

Broadcast::Reported Broadcast::painted(const ScreenReport& report, const KnownScreen& visitor) {
  const bool isAtHub = !report.view.empty();
  if (isAtHub && !use(report.view)) return Reported::UnknownScreen;
  Screens::Screen* const screen =
      isAtHub ? book_.atHub(report.screen, *uses_.find(report.view)) : book_.find(report.screen);
  if (screen == nullptr || screen->course.has_value() != isAtHub) return Reported::UnknownScreen;
  PaintReport paint = report.paint;
  // Numbers of another run say nothing.
  if (isAtHub && report.run != channelOf(screen->view).run()) paint.sequence = 0;
  if (!book_.painted(*screen, paint, changedAt(screen->view, paint.sequence))) return Reported::TooOften;
  if (isAtHub) {
    screen->known = visitor;
    screen->course = {options_.now(), newest(screen->view), changedAt(screen->view, paint.sequence + 1)};
  }
  return Reported::Done;
}

std::optional<std::string> Broadcast::stateText(const std::string& name) {
  const auto address = viewNamed(name);
  if (!address || (publisher_ && !use(name))) return std::nullopt;
  dropUnusedChannels();
  ViewChannel& channel = channelOf(viewAt(show_, *address));
  const auto picture = channel.picture();
  if (!picture) return std::nullopt;
  const auto id = publisher_ ? publisher_->lastId(name) : std::nullopt;
  return stateOfView(channel.run(), channel.sequence(), id, options_.hubs, *picture);
}

std::optional<std::string> Broadcast::pictureForHubs(const std::string& name) {
  const auto view = uses_.find(name);
  return view ? channelOf(*view).pictureForHubs() : std::nullopt;
}

std::optional<Broadcast::Time> Broadcast::changedAt(const View& view, std::uint64_t sequence) const {
  const auto channel = views_.find(view);
  return channel == views_.end() ? std::nullopt : channel->second.streams().changedAt(sequence);
}

std::uint64_t Broadcast::newest(const View& view) const {
  const auto channel = views_.find(view);
  return channel == views_.end() ? 0 : channel->second.sequence();
}

void Broadcast::stop() {
  if (stopped_) return;
  stopped_ = true;
  heart_.cancel();
  const auto end = [](std::uint64_t sequence) { return endMessage(sequence, "server"); };
  for (auto& [view, channel] : views_) channel.streams().finish(end);
  programs_.finish(end);
}

void Broadcast::close() {
  stopped_ = true;
  heart_.cancel();
  for (auto& [view, channel] : views_) channel.streams().close();
  programs_.close();
  publisher_.reset();
}

template <typename Build>
auto Broadcast::guarded(const Build& build) const -> decltype(build()) {
  try {
    return build();
  } catch (const basic::Error& error) {
    if (options_.onError) options_.onError(error);
  } catch (const std::exception& error) {
    if (options_.onError) options_.onError(basic::Error(basic::AdapterError, "web", error.what()));
  }
  return nullptr;
}

}  // namespace web
