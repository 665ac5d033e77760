// Who hears what: each change goes onto the channels of the views that it touches.
#include "web/show/Broadcast.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "web/show/ClientFiles.h"
#include "web/show/Messages.h"

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

Broadcast::Broadcast(boost::asio::io_context& loop, Show& show, const Options& options)
    : show_(show), options_(options), heart_(loop), programs_([this](std::uint64_t sequence) {
        return guarded([&] { return stateMessage(sequence, show_.stateJson()); });
      }) {}

void Broadcast::start() {
  heart_.expires_after(options_.heartbeat);
  heart_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled && !self->stopped_) self->beat();
  });
}

void Broadcast::beat() {
  start();
  static const SharedMessage visible = heartbeatMessage(true);
  static const SharedMessage silent = heartbeatMessage(false);
  for (auto& [view, channel] : views_) channel.send(visible);
  programs_.send(silent);
  dropUnusedChannels();
}

void Broadcast::openScreen(Connection connection, const View& view) {
  openOn(view, std::move(connection), book_.add(view));
}

void Broadcast::openRemote(Connection connection) { openOn(View{}, std::move(connection), std::nullopt); }

void Broadcast::openProgram(Connection connection) { programs_.open(std::move(connection), options_); }

void Broadcast::openOn(const View& view, Connection connection, const std::optional<std::string>& screen) {
  dropUnusedChannels();
  Channel& channel = channelOf(view);
  watchSlides();
  channel.open(std::move(connection), options_, screen.value_or(""), greetingMessage(screen));
}

Channel& Broadcast::channelOf(const View& view) {
  return views_
      .try_emplace(
          view,
          [this, view](std::uint64_t sequence) {
            return guarded([&] {
              return screenStateMessage(sequence, show_.state(view), clientVersion(), options_.heartbeat);
            });
          },
          [this](const std::string& screen) { book_.remove(screen); })
      .first->second;
}

/// Not when the last stream leaves: the channel is at work then.
void Broadcast::dropUnusedChannels() {
  std::erase_if(views_, [](const auto& entry) { return entry.second.size() == 0; });
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

void Broadcast::publish(const ScreenState& state, Channel& channel, Time changed) {
  channel.publish(
      [&](std::uint64_t sequence) {
        return screenStateMessage(sequence, state, clientVersion(), options_.heartbeat);
      },
      changed);
}

void Broadcast::slideChanged(Time changed) {
  if (stopped_) return;
  const ScreenState state = show_.state(View{});
  const auto screens = views_.find(View{});
  if (screens != views_.end()) publish(state, screens->second, changed);
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
    if (view.kind == View::Kind::Show || channel.size() == 0) continue;
    publish(show_.state(view), channel, changed);
  }
}

/// Slides and shapes that views name may be others now, or gone.
void Broadcast::deckChanged(Time changed) {
  if (stopped_) return;
  for (auto& [view, channel] : views_) {
    if (view.kind != View::Kind::Show) channel.dismiss();
  }
  dropUnusedChannels();
  programs_.publish([&](std::uint64_t sequence) { return stateMessage(sequence, show_.stateJson()); },
                    changed);
  slideChanged(changed);
}

void Broadcast::shapesChanged(const std::vector<ShapeChange>& changes, Time changed) {
  if (stopped_ || changes.empty()) return;
  for (auto& [view, channel] : views_) {
    const auto isShown = [&view = view](const ShapeChange& change) { return isSeen(change, view); };
    if (std::none_of(changes.begin(), changes.end(), isShown)) continue;
    channel.publish([&](std::uint64_t sequence) { return shapesMessage(sequence, changes, isShown); },
                    changed);
  }
  programs_.publish([&](std::uint64_t sequence) { return valuesMessage(sequence, changes); }, changed);
}

Broadcast::Reported Broadcast::painted(std::string_view screen, const PaintReport& report) {
  Screens::Screen* const known = book_.find(screen);
  if (known == nullptr) return Reported::UnknownScreen;
  const auto changed = changedAt(known->view, report.sequence);
  return book_.painted(*known, report, changed) ? Reported::Done : Reported::TooOften;
}

std::optional<Broadcast::Time> Broadcast::changedAt(const View& view, std::uint64_t sequence) const {
  const auto channel = views_.find(view);
  return channel == views_.end() ? std::nullopt : channel->second.changedAt(sequence);
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
  for (auto& [view, channel] : views_) channel.finish(end);
  programs_.finish(end);
}

void Broadcast::close() {
  stopped_ = true;
  heart_.cancel();
  for (auto& [view, channel] : views_) channel.close();
  programs_.close();
}

SharedMessage Broadcast::guarded(const std::function<SharedMessage()>& build) const {
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
