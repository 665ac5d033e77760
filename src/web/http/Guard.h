#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "web/http/Request.h"

namespace web {

struct Options;

/// Decides whether a request may be here at all, and whether it may change
/// something.
///
/// A page of another site must not reach the server through a visitor's browser,
/// neither by a request of its own (its Origin is foreign) nor by a name of its
/// own that it points at our address (its Host is foreign). Accepted as Host:
///  - always "localhost", "127.0.0.1", "[::1]", the address the server is bound
///    to, and Options::allowedNames;
///  - unless bound to loopback, also every IP literal (nobody can own one by
///    DNS), the machine's name, and that name under ".local".
///  - the names of Options::hubs.
/// The port is not compared, so a forwarded port works. An Origin, when there is
/// one, must have the same name and port as the Host; but screens of one hub may look whether
/// another one is there, and be set up there.
class Guard {
 public:
  /// `machine` is the computer's host name.
  Guard(const Options& options, std::string_view machine);

  /// Why the request is foreign, or nothing. `mayBeOfHub`: pages of all hubs may ask this.
  [[nodiscard]] std::optional<std::string> objection(const Request& request, bool mayBeOfHub = false) const;
  /// Whether it comes from a page of one of Options::hubs.
  [[nodiscard]] bool isOfHub(const Request& request) const;
  /// Whether the request carries the token; takes the same time for any wrong
  /// token of the right length.
  [[nodiscard]] bool mayChange(const Request& request) const;
  /// Whether this is the token.
  [[nodiscard]] bool isToken(std::string_view text) const;
  /// What the request offers as a token (RFC 6750); empty for nothing.
  [[nodiscard]] static std::string_view bearerOf(const Request& request);

  /// A cookie (the value of a Set-Cookie header, RFC 6265) for the browser of who holds the token. It
  /// says who may come in when it is full, and nothing else: a browser sends no header of a script's
  /// with pages, pictures and event streams.
  [[nodiscard]] std::string pass() const;
  [[nodiscard]] bool hasPass(const Request& request) const;

 private:
  [[nodiscard]] bool isOurs(std::string_view name) const;

  std::vector<std::string> names_;
  std::vector<std::string> hubs_;
  bool anyAddress_;
  std::string token_;
  /// Name and value; a name of its own, as cookies do not tell two servers on one machine apart.
  std::string pass_;
};

}  // namespace web
