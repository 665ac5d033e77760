#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "web/http/Channel.h"

namespace web {

/// What the screens with one view are told: events, numbered in one run, over streams and over hubs.
class ViewChannel {
 public:
  /// The data of the `picture` event; null when the show cannot say it.
  using Picture = std::function<std::shared_ptr<const std::string>()>;
  /// Puts an event together when somebody listens.
  using Data = std::function<std::string()>;

  /// `left` hears the name of a stream that has closed by itself.
  ViewChannel(Picture picture, std::function<void(const std::string& name)> left);

  [[nodiscard]] Channel& streams() { return streams_; }
  [[nodiscard]] const Channel& streams() const { return streams_; }
  /// Tells this course of numbers from any other.
  [[nodiscard]] const std::string& run() const { return run_; }
  [[nodiscard]] std::uint64_t sequence() const { return streams_.sequence(); }

  /// Counts one event, `event` with `data`, and sends it to the streams, and to `hubs` as a message for
  /// them where that is not empty.
  void publish(std::string_view event, const Data& data, Channel::Time changed,
               const std::function<void(std::string message)>& hubs);

  /// The whole state at sequence(); null as Picture.
  std::shared_ptr<const std::string> picture();

  // Messages for hubs, see docs/hubs.md:

  [[nodiscard]] std::string beatForHubs() const { return forHubs("beat", {}); }
  /// The picture, or how it is to be had; nothing when the show cannot say it.
  std::optional<std::string> pictureForHubs();

 private:
  [[nodiscard]] std::string forHubs(std::string_view event, std::string_view data) const;

  Picture build_;
  std::string run_;
  /// Of the present number, once somebody has asked for it.
  std::shared_ptr<const std::string> picture_;
  Channel streams_;
};

}  // namespace web
