// What becomes of a message for a hub: it waits its turn, goes to a node, to the next one, or waits for
// better times.

#include "web/publish/Publisher.h"

#include <algorithm>
#include <utility>

#include "json/Json.h"

namespace web {

using boost::system::error_code;

namespace {

constexpr long tooLarge = 413;

bool isTaken(long status) { return status >= 200 && status < 300; }

std::string whyNot(const Poster::Answer& answer) {
  switch (answer.status) {
    case 0:
      return answer.why;
    case 401:
    case 403:
      return "it refuses the token (status " + std::to_string(answer.status) + ")";
    case 404:
    case 405:
      return "nothing can be published at this address (status " + std::to_string(answer.status) + ")";
    default:
      return "it answers with status " + std::to_string(answer.status);
  }
}

/// What the hub calls the message, where it says so.
std::optional<std::string> idIn(const std::string& body) {
  const json::Json answer = json::Json::parse(body, nullptr, false);
  if (!answer.is_object()) return std::nullopt;
  const auto id = answer.find("last_message_id");
  constexpr std::size_t longest = 200;
  if (id == answer.end() || !id->is_string()) return std::nullopt;
  auto text = id->get<std::string>();
  return text.empty() || text.size() > longest ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

Publisher::Publisher(boost::asio::io_context& loop, PublisherOptions options, WholeState wholeState)
    : options_(std::move(options)),
      wholeState_(std::move(wholeState)),
      rest_(loop),
      probes_(loop),
      poster_(loop, options_.token, options_.timeout) {
  for (const HubNode& node : options_.nodes) nodes_.push_back({node, {}, {}, Clock::now()});
}

Publisher::~Publisher() = default;

Publisher::Channel& Publisher::channelOf(const std::string& name) {
  const auto [entry, isNew] = channels_.try_emplace(name);
  if (isNew) entry->second.number = ++lastNumber_;
  return entry->second;
}

void Publisher::publish(const std::string& name, std::string message) {
  Channel& channel = channelOf(name);
  // The state is made when its turn comes, and has this in it.
  if (channel.wantsState) return;
  channel.bytes += message.size();
  channel.queue.push_back(std::make_shared<const std::string>(std::move(message)));
  const std::size_t ahead = channel.isSending ? 1 : 0;
  if (channel.queue.size() - ahead > options_.queueMessages || channel.bytes > options_.queueBytes) {
    drop(channel);
  }
  goOn(name, channel);
}

void Publisher::beat(const std::string& name, std::string message) {
  const Channel& channel = channelOf(name);
  if (channel.queue.empty() && !channel.wantsState) publish(name, std::move(message));
}

void Publisher::drop(Channel& channel) {
  while (channel.queue.size() > (channel.isSending ? 1 : 0)) {
    channel.bytes -= channel.queue.back()->size();
    channel.queue.pop_back();
  }
  channel.wantsState = true;
}

void Publisher::goOn(const std::string& name, Channel& channel) {
  if (channel.isSending || isResting_) return;
  if (channel.queue.empty() && std::exchange(channel.wantsState, false)) {
    if (auto state = wholeState_(name)) {
      channel.bytes = state->size();
      channel.queue.push_back(std::make_shared<const std::string>(std::move(*state)));
    }
  }
  if (channel.queue.empty()) return;
  channel.isSending = true;
  const std::size_t node = current_;
  poster_.post(nodes_[node].address, name, channel.queue.front(),
               [this, name, number = channel.number, node](const Poster::Answer& answer) {
                 answered(name, number, node, answer);
               });
}

void Publisher::goOnWithAll() {
  isResting_ = false;
  for (auto& [name, channel] : channels_) goOn(name, channel);
}

void Publisher::answered(const std::string& name, std::uint64_t number, std::size_t node,
                         const Poster::Answer& answer) {
  const bool isDone = judge(node, answer);
  const auto found = channels_.find(name);
  if (found == channels_.end() || found->second.number != number) return;
  Channel& channel = found->second;
  channel.isSending = false;
  if (isDone) {
    if (auto id = idIn(answer.body)) channel.lastId = std::move(id);
    takeFirst(channel);
    return goOn(name, channel);
  }
  if (channel.wantsState) takeFirst(channel);
  if (++channel.refusals < nodes_.size()) return goOn(name, channel);
  channel.refusals = 0;
  rest();
}

void Publisher::takeFirst(Channel& channel) {
  channel.refusals = 0;
  channel.bytes -= channel.queue.front()->size();
  channel.queue.pop_front();
}

bool Publisher::judge(std::size_t node, const Poster::Answer& answer) {
  if (isTaken(answer.status)) {
    ++taken_;
    nodeIsUp(node);
    return true;
  }
  ++failures_;
  if (answer.status == tooLarge) {
    nodeIsUp(node);
    if (!std::exchange(isTooLargeTold_, true)) {
      tell("The hub at " + nodes_[node].address.name +
           " finds a message too large (status 413): screens fetch what is in it.");
    }
    return true;
  }
  nodeIsDown(node, whyNot(answer));
  return false;
}

void Publisher::nodeIsUp(std::size_t index) {
  Node& node = nodes_[index];
  rounds_ = 0;
  if (node.isUp == true) return;
  if (node.isUp) tell("The hub at " + node.address.name + " takes messages again.");
  node.isUp = true;
  node.why.clear();
  node.since = Clock::now();
}

void Publisher::nodeIsDown(std::size_t index, std::string why) {
  Node& node = nodes_[index];
  if (current_ == index) current_ = (index + 1) % nodes_.size();
  if (node.isUp != false) {
    tell("The hub at " + node.address.name + " takes no messages: " + why + ".");
    node.since = Clock::now();
    probeLater();
  }
  node.isUp = false;
  node.why = std::move(why);
}

void Publisher::rest() {
  if (std::exchange(isResting_, true)) return;
  constexpr int mostDoublings = 10;
  const auto pause =
      std::min(options_.longestPause, options_.firstPause * (1 << std::min(rounds_, mostDoublings)));
  ++rounds_;
  rest_.expires_after(pause);
  rest_.async_wait([this, isAlive = std::weak_ptr(isAlive_)](error_code cancelled) {
    if (!cancelled && !isAlive.expired()) goOnWithAll();
  });
}

void Publisher::probeLater() {
  probes_.expires_after(options_.probePause);
  probes_.async_wait([this, isAlive = std::weak_ptr(isAlive_)](error_code cancelled) {
    if (!cancelled && !isAlive.expired()) probe();
  });
}

void Publisher::probe() {
  static const auto nothing = std::make_shared<const std::string>(R"({"event":"probe"})");
  bool isNeeded = false;
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    if (nodes_[i].isUp != false) continue;
    isNeeded = true;
    if (std::exchange(nodes_[i].isProbed, true)) continue;
    poster_.post(nodes_[i].address, "probe", nothing, [this, i](const Poster::Answer& answer) {
      nodes_[i].isProbed = false;
      if (!judge(i, answer) || !isResting_) return;
      current_ = i;
      rest_.cancel();
      goOnWithAll();
    });
  }
  if (isNeeded) probeLater();
}

std::optional<std::string> Publisher::lastId(const std::string& name) const {
  const auto found = channels_.find(name);
  return found == channels_.end() ? std::nullopt : found->second.lastId;
}

std::size_t Publisher::waiting() const {
  std::size_t count = 0;
  for (const auto& [name, channel] : channels_) count += channel.queue.size() + (channel.wantsState ? 1 : 0);
  return count;
}

}  // namespace web
