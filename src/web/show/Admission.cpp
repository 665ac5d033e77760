// Who may look, and how a screen is set up for it.
#include "web/show/Admission.h"

#include "json/Json.h"
#include "web/http/Cookie.h"

namespace web {
namespace {

using json::Json;

constexpr std::string_view cookieName = "lumenfold_screen";
/// A year, in seconds; browsers keep no cookie for longer than a bit more.
constexpr std::string_view cookieLife = "; Path=/; Max-Age=31536000; HttpOnly; SameSite=Lax";

std::string cookieOf(std::string_view token, const Request& request) {
  std::string cookie = std::string(cookieName) + '=' + std::string(token) + std::string(cookieLife);
  // A proxy speaks TLS for this server: the page's own address tells.
  if (request.origin.starts_with("https:")) cookie += "; Secure";
  return cookie;
}

std::string tokenIn(std::string_view body) {
  const Json json = Json::parse(body, nullptr, /*allow_exceptions=*/false);
  const auto found = json.is_object() ? json.find("token") : json.end();
  return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

Response unknownVisitor() {
  return Response::error(401,
                         "Looking takes a token here, and this one is not known, or not any more. "
                         "\"lumenfold screen add NAME\" makes one.");
}

std::optional<KnownScreen> Admission::visitor(const Request& request) const {
  if (!isAsked() || guard_.mayChange(request) || guard_.hasPass(request)) return KnownScreen{};
  for (const std::string_view token : {Guard::bearerOf(request), cookieNamed(request.cookie, cookieName)}) {
    if (token.empty()) continue;
    if (auto screen = screens_->withToken(token)) return screen;
  }
  return std::nullopt;
}

Response Admission::entered(const Request& request) const {
  const std::string token = tokenIn(request.body);
  Json json = {{"ok", true}, {"screen", nullptr}, {"steers", guard_.isToken(token)}, {"hubs", hubs_}};
  std::string cookie;
  if (json["steers"] == true) {
    cookie = guard_.pass();
  } else if (const auto screen = isAsked() ? screens_->withToken(token) : std::nullopt) {
    json["screen"] = screen->name;
    cookie = cookieOf(token, request);
  } else {
    return unknownVisitor();
  }
  Response response = Response::fresh(200, "application/json", json::textOf(json));
  response.headers.emplace_back("Set-Cookie", std::move(cookie));
  return response;
}

Response Admission::checked(const Request& request) const {
  if (!visitor(request)) return unknownVisitor();
  return Response::fresh(204, "text/plain", "");
}

}  // namespace web
