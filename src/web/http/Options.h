#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "basic/Error.h"

namespace web {

class KnownScreens;

/// How a server listens, whom it lets in and how long it waits.
struct Options {
  /// The address to listen on, an IP literal. "0.0.0.0" or "::" for every
  /// interface ("::" takes IPv4 as well).
  std::string address = "127.0.0.1";
  /// 0 takes any free port.
  std::uint16_t port = 8080;
  /// What a request must carry to change something. Empty: nothing may.
  std::string token;
  /// Who may look, if that takes a token as well; outlives the server. Null: everybody may.
  const KnownScreens* screens = nullptr;
  /// Further names under which the server may be addressed; see Guard.
  std::vector<std::string> allowedNames;
  /// The origins at which browsers find the hubs that pass this server's messages on, and the server itself:
  /// "http://hub.example.org:8080", in small letters. Their names are allowed.
  std::vector<std::string> hubs;

  /// Connections at one time, streams included; see Listener for what one more gets.
  std::size_t maxConnections = 2000;
  /// Those of one address; this machine's own may have them all. See Seats.
  std::size_t maxPerAddress = 1000;
  /// Connections beyond these at one time, which may ask one thing each; see Handler::answerGuest().
  std::size_t maxGuests = 32;
  /// Streams beyond these at one time, of guests to whom the handler gives one.
  std::size_t keptSeats = 16;
  /// A new connection must have sent its request within this time.
  std::chrono::milliseconds requestTimeout{10'000};
  /// One that is beyond maxConnections, within this.
  std::chrono::milliseconds guestTimeout{2'000};
  /// A connection that has been answered may wait this long for its next request.
  std::chrono::milliseconds idleTimeout{60'000};
  /// The reader of a stream that takes nothing for so long is dropped; for other
  /// answers see timeToWrite().
  std::chrono::milliseconds writeTimeout{30'000};
  /// After stop(), connections that are still busy are cut after this time.
  std::chrono::milliseconds stopTimeout{2'000};

  /// Pause between two signs of life on a stream.
  std::chrono::milliseconds heartbeat{15'000};
  /// What may wait unsent for one stream; beyond it, the stream skips to the
  /// newest state.
  std::size_t queueMessages = 64;
  std::size_t queueBytes = 1024 * 1024;
  /// The kernel's buffer of a stream: small, because what lies there cannot be
  /// skipped any more.
  int streamSendBuffer = 256 * 1024;

  /// Hears of failures inside the program that a request met.
  std::function<void(const basic::Error&)> onError;
  /// The clock by which screens are late or gone.
  std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;

  /// How many connections there may be at one time beside maxConnections.
  [[nodiscard]] std::size_t beyond() const { return maxGuests + keptSeats; }
  /// The time allowed for an answer of so many bytes: writeTimeout and one second for
  /// every 64 KiB.
  [[nodiscard]] std::chrono::milliseconds timeToWrite(std::size_t bytes) const {
    return writeTimeout + std::chrono::milliseconds(bytes / 64);
  }
};

}  // namespace web
