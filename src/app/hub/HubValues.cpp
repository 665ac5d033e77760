// What may stand in a hub's configuration, and what is wrong with the rest.

#include "app/hub/HubValues.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "app/wiring/Failure.h"

namespace app::hub {

namespace {

constexpr std::string_view Digits = "0123456789";
constexpr std::string_view LettersAndDigits =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

bool consistsOf(std::string_view text, std::string_view others) {
  return std::all_of(text.begin(), text.end(), [others](char c) {
    return LettersAndDigits.find(c) != std::string_view::npos || others.find(c) != std::string_view::npos;
  });
}

[[noreturn]] void refuse(std::string_view text, std::string_view what) {
  fail("'" + std::string(text) + "' is no " + std::string(what) + ".");
}

std::optional<std::uint16_t> portNumber(std::string_view text) {
  std::uint16_t port = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), port);
  if (failed != std::errc() || end != text.data() + text.size() || port == 0) return std::nullopt;
  return port;
}

struct HostAndPort {
  std::string host;
  std::optional<std::uint16_t> port;
};

/// "host", "host:port", "[v6]", "[v6]:port"; nothing when it is none of them.
std::optional<HostAndPort> hostAndPort(std::string_view text) {
  std::size_t end = std::min(text.find(':'), text.size());
  bool isHost = end > 0 && end <= 253 && consistsOf(text.substr(0, end), ".-");
  if (text.starts_with('[')) {
    end = std::min(text.find(']'), text.size() - 1) + 1;
    const std::string_view inside = text.substr(1, end - 2);
    isHost = text[end - 1] == ']' && inside.find(':') != std::string_view::npos &&
             inside.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
  }
  if (!isHost) return std::nullopt;
  HostAndPort parsed{std::string(text.substr(0, end)), std::nullopt};
  std::transform(parsed.host.begin(), parsed.host.end(), parsed.host.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (end == text.size()) return parsed;
  if (text[end] != ':') return std::nullopt;
  parsed.port = portNumber(text.substr(end + 1));
  return parsed.port ? std::optional(parsed) : std::nullopt;
}

}  // namespace

std::string Address::authority() const { return isDefaultPort ? host : host + ':' + std::to_string(port); }

Address webAddress(std::string_view text) {
  constexpr std::string_view What = "address as http://HOST[:PORT] or https://HOST[:PORT]";
  const std::size_t colon = text.find("://");
  const std::string_view scheme = text.substr(0, std::min(colon, text.size()));
  if (colon == std::string_view::npos || (scheme != "http" && scheme != "https")) refuse(text, What);
  std::string_view rest = text.substr(colon + 3);
  if (rest.ends_with('/')) rest.remove_suffix(1);
  const auto parsed = hostAndPort(rest);
  if (!parsed) refuse(text, What);
  const std::uint16_t usual = scheme == "https" ? 443 : 80;
  const std::uint16_t port = parsed->port.value_or(usual);
  return {std::string(scheme), parsed->host, port, port == usual};
}

Listening listening(std::string_view text) {
  constexpr std::string_view Socket = "unix:";
  if (text.starts_with(Socket)) {
    return {std::string(Socket) + path(text.substr(Socket.size())), true, true};
  }
  if (portNumber(text)) return {std::string(text), false, false};
  const auto parsed = hostAndPort(text);
  if (!parsed || !parsed->port) {
    refuse(text, "place to listen at: a port, ADDRESS:PORT, [ADDRESS]:PORT or unix:/PATH");
  }
  const std::string& host = parsed->host;
  // A name may mean another address tomorrow.
  const bool isAddressOf4 = host.find_first_not_of("0123456789.") == std::string::npos;
  return {host + ':' + std::to_string(*parsed->port), false,
          host == "[::1]" || (isAddressOf4 && host.starts_with("127."))};
}

std::string redisUrl(std::string_view text) {
  constexpr std::string_view What =
      "server of a Redis: HOST[:PORT][/NUMBER], HOST a name or an address of IPv4";
  std::string_view rest = text;
  const auto take = [&rest](std::string_view prefix) {
    const bool isThere = rest.starts_with(prefix);
    if (isThere) rest.remove_prefix(prefix.size());
    return isThere;
  };
  // What is wrong with a password is told without it.
  if (!take("redis://") && !take("rediss://")) {
    fail("A Redis is given as redis://[[USER]:PASSWORD@]HOST[:PORT][/NUMBER], or as rediss:// with TLS.");
  }
  if (const std::size_t at = rest.rfind('@'); at != std::string_view::npos) {
    const std::string_view who = rest.substr(0, at);
    if (who.find(':') == std::string_view::npos || !consistsOf(who, ":._~%+-")) {
      fail("The user and password of a Redis are USER:PASSWORD of letters, digits and ._~+-, others as %XX.");
    }
    rest.remove_prefix(at + 1);
  }
  if (const std::size_t slash = rest.find('/'); slash != std::string_view::npos) {
    if (rest.find_first_not_of(Digits, slash + 1) != std::string_view::npos) refuse(rest, What);
    rest = rest.substr(0, slash);
  }
  const auto parsed = hostAndPort(rest);
  // The module does not read addresses of IPv6.
  if (!parsed || parsed->host.starts_with('[')) refuse(rest, What);
  return std::string(text);
}

std::string path(std::string_view text) {
  const auto isOdd = [](char c) {
    return static_cast<unsigned char>(c) < ' ' ||
           std::string_view("\"'\\$;{}\x7f").find(c) != std::string_view::npos;
  };
  if (!text.starts_with('/')) refuse(text, "absolute path");
  if (std::any_of(text.begin(), text.end(), isOdd)) {
    refuse(text, "path that a configuration can name: it may hold no quotes and none of \\ $ ; { }");
  }
  return std::string(text);
}

std::string siteName(std::string_view text) {
  constexpr std::size_t Longest = 64;
  if (text.empty() || text.size() > Longest || !consistsOf(text, " ._-") || text.front() == ' ' ||
      text.back() == ' ') {
    refuse(text, "name of a site: up to 64 letters, digits, blanks and any of ._-");
  }
  return std::string(text);
}

std::string channelGroup(std::string_view text) {
  constexpr std::size_t Longest = 32;
  if (text.empty() || text.size() > Longest || !consistsOf(text, "_-")) {
    refuse(text, "name of a group: up to 32 letters, digits and any of _-");
  }
  return std::string(text);
}

std::string token(std::string_view text) {
  constexpr std::size_t Shortest = 16;
  constexpr std::size_t Longest = 200;
  if (text.size() < Shortest || text.size() > Longest || !consistsOf(text, "._~+/=-")) {
    fail("The token for publishing must have 16 to 200 letters, digits and any of ._~+/=-.");
  }
  return std::string(text);
}

}  // namespace app::hub
