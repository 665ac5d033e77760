#include "web/desk/DeskWindows.h"

#include <exception>
#include <utility>
#include <vector>

#include "web/http/Event.h"

namespace web {

using boost::system::error_code;

DeskWindows::DeskWindows(boost::asio::io_context& loop, Desk& desk, const Options& options,
                         std::function<Clock::time_point()> now)
    : desk_(desk), options_(options), now_(std::move(now)), heart_(loop) {}

void DeskWindows::start() {
  heart_.expires_after(options_.heartbeat);
  heart_.async_wait([self = shared_from_this()](error_code cancelled) {
    if (!cancelled && !self->stopped_) self->beat();
  });
}

void DeskWindows::beat() {
  start();
  static const SharedMessage sign = messageOf("event: beat\ndata: {}\n\n");
  const Clock::time_point now = now_();
  std::vector<std::string> gone;
  for (auto& [name, window] : windows_) {
    window.channel.send(sign);
    if (window.channel.size() > 0) window.seen = now;
    if (now - window.seen > KeptFor) gone.push_back(name);
  }
  for (const std::string& name : gone) {
    windows_.erase(name);
    desk_.forget(name);
  }
}

std::size_t DeskWindows::streams() const {
  std::size_t count = 0;
  for (const auto& [name, window] : windows_) count += window.channel.size();
  return count;
}

bool DeskWindows::isOpen(const std::string& window) const {
  const auto known = windows_.find(window);
  return known != windows_.end() && known->second.channel.size() > 0;
}

void DeskWindows::open(Connection connection, const std::string& window) {
  desk_.opened(window);
  const auto build = [this, window](std::uint64_t sequence) { return state(window, sequence); };
  Window& entry = windows_.try_emplace(window, build).first->second;
  entry.seen = now_();
  Channel& channel = entry.channel;
  // While nobody listened nothing was counted, and what the channel has of the state may be old.
  if (channel.size() == 0) channel.publish(build, std::chrono::steady_clock::now());
  channel.open(std::move(connection), options_);
  desk_.repeat(window);
}

SharedMessage DeskWindows::state(const std::string& window, std::uint64_t sequence) {
  try {
    return messageOf(eventText("state", sequence, json::textOf(desk_.state(window))), true);
  } catch (const basic::Error& error) {
    if (options_.onError) options_.onError(error);
  } catch (const std::exception& error) {
    if (options_.onError) options_.onError(basic::Error(basic::AdapterError, "web", error.what()));
  }
  return nullptr;
}

void DeskWindows::send(const std::string& window, std::string_view event, const json::Json& data) {
  const auto known = windows_.find(window);
  if (stopped_ || known == windows_.end()) return;
  known->second.channel.publish(
      [&](std::uint64_t sequence) { return messageOf(eventText(event, sequence, json::textOf(data))); },
      std::chrono::steady_clock::now());
}

void DeskWindows::stop() {
  if (std::exchange(stopped_, true)) return;
  heart_.cancel();
  for (auto& [name, window] : windows_) {
    window.channel.finish(
        [](std::uint64_t sequence) { return lastMessage(eventText("end", sequence, "{}")); });
  }
}

void DeskWindows::close() {
  stopped_ = true;
  heart_.cancel();
  for (auto& [name, window] : windows_) window.channel.close();
}

}  // namespace web
