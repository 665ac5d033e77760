#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace app::hub {

// Values of a command line that become words of an nginx configuration. What could end a word there, begin a
// variable or a comment, is in none of them. All throw basic::Error, with the value and why it cannot be.

/// A server as its address names it.
struct Address {
  std::string scheme;
  /// A name, or an IP address (that of IPv6 in brackets), in lower case.
  std::string host;
  std::uint16_t port = 0;
  bool isDefaultPort = true;

  /// "example.org", "example.org:2000": as browsers send it in Host and, behind "scheme://", in Origin.
  [[nodiscard]] std::string authority() const;
  [[nodiscard]] std::string origin() const { return scheme + "://" + authority(); }
};

/// "http://HOST[:PORT]" or https, with nothing behind it but a slash.
Address webAddress(std::string_view text);

/// Where something listens: "PORT", "ADDRESS:PORT", "[ADDRESS]:PORT" or "unix:/PATH", as nginx reads it.
struct Listening {
  std::string text;
  bool isSocketFile = false;
  bool isLoopback = false;
};

Listening listening(std::string_view text);

/// "redis://[[USER]:PASSWORD@]HOST[:PORT][/NUMBER]" or rediss, returned as it is.
std::string redisUrl(std::string_view text);

/// An absolute path.
std::string path(std::string_view text);

/// 1 to 64 letters, digits, blanks and any of "._-", a blank at neither end.
std::string siteName(std::string_view text);
/// 1 to 32 letters, digits and any of "_-".
std::string channelGroup(std::string_view text);

/// 16 to 200 characters as RFC 6750 has them (b64token).
std::string token(std::string_view text);

}  // namespace app::hub
