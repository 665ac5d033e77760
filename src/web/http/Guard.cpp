// Which hosts, origins and tokens a request may carry.
#include "web/http/Guard.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>

#include "basic/Names.h"
#include "basic/Strings.h"
#include "web/http/Options.h"
#include "web/http/Secret.h"

namespace web {
namespace {

struct Authority {
  std::string_view name;
  std::string_view port;
};

/// "name", "name:port" or "[v6]:port"; nothing when it is none of them.
std::optional<Authority> parseAuthority(std::string_view text) {
  std::size_t end = 0;
  if (!text.empty() && text.front() == '[') {
    const std::size_t close = text.find(']');
    if (close == std::string_view::npos) return std::nullopt;
    end = close + 1;
  } else {
    end = std::min(text.find(':'), text.size());
  }
  const std::string_view name = text.substr(0, end);
  std::string_view port = text.substr(end);
  if (name.empty()) return std::nullopt;
  if (!port.empty()) {
    if (port.front() != ':') return std::nullopt;
    port.remove_prefix(1);
    if (port.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  }
  return Authority{name, port};
}

std::string_view withoutBrackets(std::string_view name) {
  return name.size() >= 2 && name.front() == '[' ? name.substr(1, name.size() - 2) : name;
}

bool isSameOrigin(std::string_view origin, const Authority& host) {
  std::string_view defaultPort;
  if (origin.starts_with("http://")) {
    defaultPort = "80";
    origin.remove_prefix(7);
  } else if (origin.starts_with("https://")) {
    defaultPort = "443";
    origin.remove_prefix(8);
  } else {
    return false;
  }
  const auto from = parseAuthority(origin);
  if (!from || !basic::EqualsIgnoreCase(from->name, host.name)) return false;
  const auto orDefault = [&](std::string_view port) { return port.empty() ? defaultPort : port; };
  return orDefault(from->port) == orDefault(host.port);
}

}  // namespace

Guard::Guard(const Options& options, std::string_view machine)
    : names_{"localhost", "127.0.0.1", "::1", options.address},
      hubs_(options.hubs),
      token_(options.token),
      pass_("pass-" + newSecret().substr(0, 8) + '=' + newSecret()) {
  boost::system::error_code malformed;
  anyAddress_ = !boost::asio::ip::make_address(options.address, malformed).is_loopback();
  if (anyAddress_ && !machine.empty()) {
    names_.emplace_back(machine);
    names_.push_back(std::string(machine) + ".local");
  }
  for (const std::string& name : options.allowedNames) names_.emplace_back(withoutBrackets(name));
  for (const std::string& hub : hubs_) {
    const auto host = parseAuthority(std::string_view(hub).substr(hub.find("//") + 2));
    if (host) names_.emplace_back(withoutBrackets(host->name));
  }
}

bool Guard::isOfHub(const Request& request) const {
  return request.hasOrigin && basic::HasName(hubs_, request.origin);
}

std::optional<std::string> Guard::objection(const Request& request, bool mayBeOfHub) const {
  const auto host = parseAuthority(request.host);
  if (!host || !isOurs(withoutBrackets(host->name))) {
    return "The name in the Host header is not one of this server's. Use its address, or allow the name in "
           "the server's settings.";
  }
  if (mayBeOfHub && isOfHub(request)) return std::nullopt;
  if (request.hasOrigin && !isSameOrigin(request.origin, *host)) {
    return "The request comes from a page of another site (see its Origin header).";
  }
  return std::nullopt;
}

bool Guard::isOurs(std::string_view name) const {
  if (basic::HasName(names_, name)) return true;
  boost::system::error_code notAnAddress;
  if (anyAddress_) boost::asio::ip::make_address(name, notAnAddress);
  return anyAddress_ && !notAnAddress;
}

std::string Guard::pass() const { return pass_ + "; Path=/; Max-Age=86400; HttpOnly; SameSite=Strict"; }

bool Guard::hasPass(const Request& request) const { return request.cookie.find(pass_) != std::string::npos; }

bool Guard::mayChange(const Request& request) const { return isToken(bearerOf(request)); }

std::string_view Guard::bearerOf(const Request& request) {
  constexpr std::string_view scheme = "Bearer ";
  if (!basic::EqualsIgnoreCase(request.authorization.substr(0, scheme.size()), scheme)) return {};
  return request.authorization.substr(scheme.size());
}

bool Guard::isToken(std::string_view text) const { return !token_.empty() && isSameSecret(text, token_); }

}  // namespace web
