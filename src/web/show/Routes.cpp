// What stands at each address: who may ask for it, and what the answer is.
#include "web/show/Routes.h"

#include <algorithm>
#include <boost/asio/ip/host_name.hpp>
#include <charconv>
#include <utility>

#include "web/http/Target.h"
#include "web/show/Broadcast.h"
#include "web/show/ClientFiles.h"
#include "web/show/Page.h"
#include "web/show/Reports.h"
#include "web/show/Status.h"

namespace web {
namespace {

constexpr std::string_view pagePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self' 'unsafe-inline'; img-src 'self' data:; "
    "connect-src 'self'; font-src 'self'; media-src 'self'; base-uri 'none'; form-action 'none'; "
    "frame-ancestors 'none'";
// An asset comes out of a deck: opened by itself (an SVG picture), it may do nothing.
constexpr std::string_view assetPolicy =
    "default-src 'none'; style-src 'unsafe-inline'; img-src data:; sandbox";
constexpr std::string_view immutable = "public, max-age=31536000, immutable";

constexpr std::string_view commandPrefix = "/api/v1/";
constexpr std::string_view assetPrefix = "/assets/";
constexpr std::string_view clientPrefix = "/client/";
constexpr std::string_view slidePrefix = "/slides/";
constexpr std::string_view reportPrefix = "/api/v1/screens/";
constexpr std::string_view reportSuffix = "/painted";

std::string machineName() {
  boost::system::error_code nameless;
  return boost::asio::ip::host_name(nameless);
}

std::string_view contentType(std::string_view file) {
  return file.ends_with(".js")    ? "text/javascript; charset=utf-8"
         : file.ends_with(".css") ? "text/css; charset=utf-8"
                                  : "text/html; charset=utf-8";
}

Response wrongMethod(std::string_view allowed) {
  Response response = Response::error(405, "Only " + std::string(allowed) + " is possible here.");
  response.headers.emplace_back("Allow", allowed);
  return response;
}

Response notFound() { return Response::error(404, "There is nothing at this address."); }

Response page(std::string html) {
  Response response = Response::fresh(200, "text/html; charset=utf-8", std::move(html));
  response.headers.emplace_back("Content-Security-Policy", pagePolicy);
  return response;
}

Response json(std::string text) { return Response::fresh(200, "application/json", std::move(text)); }

std::optional<int> positiveNumber(std::string_view text) {
  int number = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = failed == std::errc() && end == text.data() + text.size() && number > 0;
  return isNumber ? std::optional(number) : std::nullopt;
}

Response unauthorised() {
  Response response = Response::error(
      401, "This needs the token that the program printed at its start: \"Authorization: Bearer TOKEN\".");
  response.headers.emplace_back("WWW-Authenticate", "Bearer");
  return response;
}

Response answerTo(const Outcome& outcome) {
  return outcome.isDone() ? Response::done() : Response::error(409, outcome.why());
}

Response answerToGoTo(Show& show, std::string_view number) {
  const auto slide = positiveNumber(number);
  if (!slide) return Response::error(400, "goto needs the number of a slide, 1 or more.");
  return answerTo(show.goTo(*slide));
}

/// Content types come out of decks, and a line break would end the header.
std::string safeType(const std::string& type) {
  const bool isPlain = std::all_of(type.begin(), type.end(), [](char c) { return c >= ' ' && c < 127; });
  return isPlain && !type.empty() ? type : "application/octet-stream";
}

/// The part of a whole answer that a Range header asks for.
Response partOf(Response whole, std::string_view range) {
  const std::string size = std::to_string(whole.body->size());
  const RangeWanted wanted = rangeWanted(range, whole.body->size());
  switch (wanted.kind) {
    case RangeWanted::Kind::Whole:
      break;
    case RangeWanted::Kind::Part: {
      const auto& [first, length] = wanted.range;
      whole.status = 206;
      whole.range = wanted.range;
      whole.headers.emplace_back("Content-Range", "bytes " + std::to_string(first) + '-' +
                                                      std::to_string(first + length - 1) + '/' + size);
      break;
    }
    case RangeWanted::Kind::Unsatisfiable: {
      Response response = Response::error(416, "The range lies behind the end.");
      response.headers.emplace_back("Content-Range", "bytes */" + size);
      return response;
    }
  }
  return whole;
}

bool isListed(std::string_view tags, std::string_view tag) {
  return tags == "*" || tags.find(tag) != std::string_view::npos;
}

}  // namespace

Routes::Routes(Show& show, Broadcast& broadcast, const Options& options)
    : show_(show), broadcast_(broadcast), options_(options), guard_(options, machineName()) {}

Response Routes::answer(const Request& request) {
  try {
    return dispatch(request);
  } catch (const basic::Error& error) {
    report(error);
  } catch (const std::exception& error) {
    report(basic::Error(basic::AdapterError, "web", error.what()));
  }
  return Response::error(500, "The show could not do this; the program's log says why.");
}

Response Routes::answerGuest(const Request& request) {
  if (mustGetIn(request)) return answer(request);
  Response response = Response::error(503, "There are too many connections, in all or from this address.");
  response.headers.emplace_back("Retry-After", "15");
  return response;
}

/// The page that steers asks for the token, so it comes before the token.
bool Routes::mustGetIn(const Request& request) const {
  const std::string_view path = request.path;
  static constexpr std::string_view always[] = {"/healthz", "/readyz", "/status", "/api/v1/status",
                                                "/remote"};
  return std::find(std::begin(always), std::end(always), path) != std::end(always) ||
         path.starts_with(clientPrefix) || guard_.mayChange(request) || guard_.hasPass(request);
}

Response Routes::dispatch(const Request& request) {
  if (request.hosts != 1) return Response::error(400, "A request needs one Host header.");
  if (const auto objection = guard_.objection(request)) return Response::error(403, *objection);

  if (auto taker = streamAt(request)) {
    if (request.method != "GET") return wrongMethod("GET");
    if (!request.canStream) return Response::error(505, "An event stream needs HTTP/1.1.");
    Response response;
    response.stream = std::move(taker);
    return response;
  }
  std::string_view path = request.path;
  if (path.starts_with(reportPrefix) && path.ends_with(reportSuffix) &&
      path.size() > reportPrefix.size() + reportSuffix.size()) {
    path.remove_prefix(reportPrefix.size());
    path.remove_suffix(reportSuffix.size());
    return painted(request, path);
  }
  if (path.starts_with(commandPrefix)) {
    if (const auto run = command(path.substr(commandPrefix.size()))) {
      if (request.method != "POST") return wrongMethod("POST");
      return guard_.mayChange(request) ? run() : unauthorised();
    }
  }
  Response response = get(request);
  const bool reading = request.method == "GET" || request.method == "HEAD";
  return reading || response.status == 404 ? response : wrongMethod("GET, HEAD");
}

Response Routes::get(const Request& request) {
  // The show's own, shared already, and perhaps a film: nobody looks through its bytes here.
  if (request.path.starts_with(assetPrefix)) {
    return assetAnswer(request, request.path.substr(assetPrefix.size()));
  }
  Response response = built(request);
  response.body = bodies_.shared(std::move(response.body));
  return response;
}

/// What is made for this answer.
Response Routes::built(const Request& request) {
  const std::string_view path = request.path;
  if (path == "/") return page(screenPage(show_.state(viewOf(request))));
  if (path == "/remote") return page(remotePage(show_.state(View{})));
  if (path == "/status") return page(statusPage(show_.state(View{})));
  if (path == "/healthz") return json(R"({"status":"ok"})");
  if (path == "/readyz") return readyAnswer();
  if (path == "/metrics") {
    return Response::fresh(200, "text/plain; version=0.0.4; charset=utf-8",
                           metricsText(show_.health(), broadcast_, failures_));
  }
  if (path == "/api/v1/state") return json(show_.stateJson());
  if (path == "/api/v1/health") return json(healthJson(show_.health(), broadcast_));
  if (path == "/api/v1/status") return json(statusJson(show_.health(), show_.state(View{}), broadcast_));
  if (path.starts_with(slidePrefix)) return slideAnswer(path.substr(slidePrefix.size()));
  if (path.starts_with(clientPrefix)) return clientAnswer(path.substr(clientPrefix.size()));
  return notFound();
}

Response Routes::readyAnswer() {
  if (show_.health().isReady) return json(R"({"status":"ready"})");
  return Response::fresh(503, "application/json", R"({"status":"not ready"})");
}

Response Routes::slideAnswer(std::string_view number) {
  const auto slide = positiveNumber(number);
  if (!slide) return notFound();
  ScreenState state = show_.state(show_.view(*slide, {}));
  return state.current ? page(std::move(state.current->html)) : notFound();
}

/// An address that makes no sense is a view of nothing: a screen shows no errors.
View Routes::viewOf(const Request& request) {
  const auto number = queryField(request.query, "slide");
  const auto shape = queryField(request.query, "shape");
  if (!number && !shape) return {};
  return show_.view(number ? std::optional(positiveNumber(*number).value_or(0)) : std::nullopt,
                    shape.value_or(""));
}

std::function<void(Connection)> Routes::streamAt(const Request& request) {
  if (request.path == "/screen/events") {
    return [this, view = viewOf(request)](Connection connection) {
      broadcast_.openScreen(std::move(connection), view);
    };
  }
  if (request.path == "/remote/events") {
    return [this](Connection connection) { broadcast_.openRemote(std::move(connection)); };
  }
  if (request.path == "/api/v1/events") {
    return [this](Connection connection) { broadcast_.openProgram(std::move(connection)); };
  }
  return nullptr;
}

Response Routes::painted(const Request& request, std::string_view screen) {
  if (request.method != "POST") return wrongMethod("POST");
  const auto report = parsePaintReport(request.body);
  if (!report) return Response::error(400, "A report is {\"slide\":3,\"sequence\":17,\"held\":12}.");
  switch (broadcast_.painted(screen, *report)) {
    case Broadcast::Reported::Done:
      break;
    case Broadcast::Reported::UnknownScreen:
      return notFound();
    case Broadcast::Reported::TooOften:
      return Response::error(429, "This screen has reported a moment ago.");
  }
  return Response::done();
}

Response Routes::clientAnswer(std::string_view path) {
  const std::size_t slash = path.find('/');
  if (slash == std::string_view::npos || path.substr(0, slash) != clientVersion()) return notFound();
  const ClientFile* file = clientFile(path.substr(slash + 1));
  if (file == nullptr || file->name.ends_with(".html")) return notFound();
  Response response;
  response.headers = {{"Content-Type", std::string(contentType(file->name))},
                      {"Cache-Control", std::string(immutable)}};
  if (file->isCompressed) response.headers.emplace_back("Content-Encoding", "gzip");
  response.body = std::make_shared<const std::string>(file->bytes);
  return response;
}

Response Routes::assetAnswer(const Request& request, std::string_view name) {
  const auto asset = show_.asset(name);
  if (!asset) return notFound();
  const std::string tag = '"' + std::string(name) + '"';
  Response response;
  response.headers = {{"ETag", tag},
                      {"Cache-Control", std::string(immutable)},
                      {"Content-Security-Policy", std::string(assetPolicy)}};
  if (isListed(request.ifNoneMatch, tag)) {
    response.status = 304;
    return response;
  }
  response.headers.emplace_back("Accept-Ranges", "bytes");
  response.headers.emplace_back("Content-Type", safeType(asset->contentType));
  response.body = asset->bytes;
  const bool isForRange = request.method == "GET" && (request.ifRange.empty() || request.ifRange == tag);
  return isForRange ? partOf(std::move(response), request.range) : response;
}

std::function<Response()> Routes::command(std::string_view name) {
  using Simple = Outcome (Show::*)();
  static constexpr std::pair<std::string_view, Simple> simple[] = {
      {"next", &Show::next}, {"previous", &Show::previous}, {"first", &Show::first},
      {"last", &Show::last}, {"end", &Show::end},
  };
  static constexpr std::pair<std::string_view, Blank> blanks[] = {
      {"blank/black", Blank::Black}, {"blank/white", Blank::White}, {"blank/off", Blank::None}};
  for (const auto& [known, function] : simple) {
    if (known == name) return [this, call = function] { return answerTo((show_.*call)()); };
  }
  for (const auto& [known, kind] : blanks) {
    if (known == name) return [this, blank = kind] { return answerTo(show_.blank(blank)); };
  }
  if (name == "pass") return [this] { return passAnswer(); };
  constexpr std::string_view goTo = "goto/";
  if (!name.starts_with(goTo)) return nullptr;
  return [this, number = name.substr(goTo.size())] { return answerToGoTo(show_, number); };
}

Response Routes::passAnswer() const {
  Response response = Response::done();
  response.headers.emplace_back("Set-Cookie", guard_.pass());
  return response;
}

void Routes::report(const basic::Error& error) {
  ++failures_;
  if (options_.onError) options_.onError(error);
}

}  // namespace web
