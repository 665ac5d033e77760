// What stands at each address of a desk: who may ask for it, and what the answer is.
#include "web/desk/DeskRoutes.h"

#include <algorithm>
#include <utility>

#include "json/Json.h"
#include "web/desk/DeskWindows.h"
#include "web/show/Answers.h"
#include "web/show/ClientFiles.h"

namespace web {
namespace {

using json::Json;

constexpr std::string_view apiPrefix = "/api/v1/desk/";
constexpr std::string_view clientPrefix = "/client/";
constexpr std::string_view helpPrefix = "/help/";
constexpr std::string_view windowPrefix = "windows/";
constexpr std::string_view copiesPrefix = "copies/";

/// Letters and digits, enough of them that no two pages choose the same.
bool isWindowName(std::string_view name) {
  constexpr std::size_t fewest = 16;
  constexpr std::size_t most = 64;
  return name.size() >= fewest && name.size() <= most && std::all_of(name.begin(), name.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

/// A name that leads to no other folder.
bool isHelpName(std::string_view name) {
  return std::all_of(name.begin(), name.end(),
                     [](char c) {
                       return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.';
                     }) &&
         !name.empty() && name.front() != '.';
}

/// The page's files carry their version in their addresses.
std::string deskPage() {
  const ClientFile* file = clientFile("desk/desk.html");
  if (file == nullptr) throw Refusal(404, "This program was built without the desk's page.");
  constexpr std::string_view mark = "{{version}}";
  std::string html(file->bytes);
  for (std::size_t at = 0; (at = html.find(mark, at)) != std::string::npos;) {
    html.replace(at, mark.size(), clientVersion());
  }
  return html;
}

Response jsonAnswer(const Json& json) {
  return json.is_null() ? Response::done() : Response::fresh(200, "application/json", json::textOf(json));
}

/// An empty body is an empty object. What the page sends is flat: values in one another without end, which
/// would be copied level by level on the stack, are none of its.
Json parsed(std::string_view body) {
  if (body.empty()) return Json::object();
  const auto refuseDepth = [](int depth, Json::parse_event_t, const Json&) {
    constexpr int deepest = 8;
    if (depth > deepest) throw Refusal(400, "The values of the request's body lie too deep in one another.");
    return true;
  };
  Json json = Json::parse(body, refuseDepth, /*allow_exceptions=*/false);
  if (!json.is_object()) throw Refusal(400, "The request's body is no JSON object.");
  return json;
}

/// As quoted-string (RFC 9110, 5.6.4) and in UTF-8 (RFC 8187).
std::string disposition(std::string_view name) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string plain;
  std::string encoded;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                         c == '.' || c == '-' || c == '_';
    plain += isPlain || c == ' ' ? c : '_';
    if (isPlain) {
      encoded += c;
    } else {
      encoded.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
  }
  return "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + encoded;
}

}  // namespace

DeskRoutes::DeskRoutes(Desk& desk, DeskWindows& windows, const Options& options)
    : desk_(desk),
      windows_(windows),
      options_(options),
      guard_(options, machineName()),
      assets_(desk.assets()) {}

Response DeskRoutes::answer(const Request& request) {
  try {
    return dispatch(request);
  } catch (const Refusal& refusal) {
    return Response::error(refusal.status(), refusal.what());
  } catch (const basic::Error& error) {
    return Response::error(409, error.description);
  } catch (const Json::exception&) {
    return Response::error(400, "The request's body does not hold what is asked for here.");
  } catch (const std::exception& error) {
    if (options_.onError) options_.onError(basic::Error(basic::AdapterError, "web", error.what()));
  }
  return Response::error(500, "The desk could not do this; the program's log says why.");
}

Response DeskRoutes::answerGuest(const Request& request) {
  if (guard_.mayChange(request)) return answer(request);
  Response response = Response::error(503, "There are too many connections, in all or from this address.");
  response.headers.emplace_back("Retry-After", "15");
  return response;
}

std::size_t DeskRoutes::bodyLimit(const Request& head) const {
  if (!guard_.mayChange(head)) return Handler::bodyLimit(head);
  return head.method == "POST" && head.path == "/api/v1/desk/deck" ? MostDeck : MostBody;
}

Response DeskRoutes::dispatch(const Request& request) {
  if (request.hosts != 1) return Response::error(400, "A request needs one Host header.");
  if (const auto objection = guard_.objection(request)) return Response::error(403, *objection);

  const std::string_view path = request.path;
  if (path.starts_with(apiPrefix)) {
    if (!guard_.mayChange(request)) return unauthorised();
    return api(request, path.substr(apiPrefix.size()));
  }
  const bool reading = request.method == "GET" || request.method == "HEAD";
  if (!reading) return path == "/" ? wrongMethod("GET, HEAD") : notFound();
  if (path == "/") return pageAnswer(deskPage());
  if (path == "/healthz") return Response::fresh(200, "application/json", R"({"status":"ok"})");
  if (path.starts_with(clientPrefix)) return clientFileAnswer(path.substr(clientPrefix.size()));
  if (path.starts_with('/') && path.substr(1).starts_with(assets_)) {
    const std::string_view name = path.substr(1 + assets_.size());
    return assetAnswer(request, name, desk_.asset(name));
  }
  if (path.starts_with(helpPrefix)) return helpAnswer(path.substr(helpPrefix.size()));
  return notFound();
}

/// The same for everybody, and opened by browsers themselves: it takes no token.
Response DeskRoutes::helpAnswer(std::string_view name) {
  const auto file = isHelpName(name) ? desk_.help(name) : std::nullopt;
  if (!file) return notFound();
  Response response = pageAnswer(*file->bytes);
  response.headers.front().second = file->contentType;
  return response;
}

Response DeskRoutes::api(const Request& request, std::string_view path) {
  if (path.starts_with(windowPrefix)) return window(request, path.substr(windowPrefix.size()));
  if (path == "deck" && request.method == "POST") return upload(request);
  if (request.method != "GET") return wrongMethod("GET");
  if (path == "deck") return download(desk_.deck());
  if (path.starts_with(copiesPrefix)) return download(desk_.copy(path.substr(copiesPrefix.size())));
  return jsonAnswer(desk_.look(path, request.query));
}

Response DeskRoutes::window(const Request& request, std::string_view path) {
  const std::size_t slash = std::min(path.find('/'), path.size());
  const std::string name(path.substr(0, slash));
  if (!isWindowName(name) || slash == path.size()) return notFound();
  path.remove_prefix(slash + 1);
  if (path == "events") return stream(request, name);
  if (request.method != "POST") return wrongMethod("POST");
  return jsonAnswer(desk_.act(name, path, parsed(request.body)));
}

Response DeskRoutes::stream(const Request& request, const std::string& window) {
  if (request.method != "GET") return wrongMethod("GET");
  if (!request.canStream) return Response::error(505, "An event stream needs HTTP/1.1.");
  if (windows_.isFull()) return Response::error(503, "This desk has as many windows as it can serve.");
  Response response;
  response.stream = [this, window](Connection connection) { windows_.open(std::move(connection), window); };
  return response;
}

Response DeskRoutes::download(Download file) {
  Response response;
  response.headers = {
      {"Content-Type", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
      {"Cache-Control", "no-store"},
      {"Content-Disposition", disposition(file.name)}};
  response.body = std::move(file.bytes);
  return response;
}

Response DeskRoutes::upload(const Request& request) {
  desk_.takeDeck(request.ownBody != nullptr ? std::move(*request.ownBody) : std::string(request.body));
  return Response::done();
}

}  // namespace web
