// What stands at each address: who may ask for it, and what the answer is.
#include "web/show/Routes.h"

#include <algorithm>
#include <utility>

#include "web/http/Target.h"
#include "web/show/Answers.h"
#include "web/show/Broadcast.h"
#include "web/show/Messages.h"
#include "web/show/Page.h"
#include "web/show/Reports.h"
#include "web/show/Status.h"
#include "web/show/ViewName.h"

namespace web {
namespace {

constexpr std::string_view commandPrefix = "/api/v1/";
constexpr std::string_view assetPrefix = "/assets/";
constexpr std::string_view clientPrefix = "/client/";
constexpr std::string_view slidePrefix = "/slides/";
constexpr std::string_view statePrefix = "/screen/state/";

Response json(std::string text) { return Response::fresh(200, "application/json", std::move(text)); }

std::optional<int> positiveNumber(std::string_view text) {
  const auto number = takeNumber(text);
  return number && *number > 0 && text.empty() ? number : std::nullopt;
}

/// What may be asked without a look at the show, where that takes a token: what watches over the program, and
/// what a browser needs to be let in.
bool isOpen(std::string_view path) {
  static constexpr std::string_view open[] = {"/healthz",       "/readyz",        "/status",
                                              "/api/v1/status", "/api/v1/health", "/metrics"};
  return std::find(std::begin(open), std::end(open), path) != std::end(open) ||
         path.starts_with(clientPrefix);
}

Response answerFor(const Outcome& outcome) {
  return outcome.isDone() ? Response::done() : Response::error(409, outcome.why());
}

Response answerToGoTo(Show& show, std::string_view number) {
  const auto slide = positiveNumber(number);
  if (!slide) return Response::error(400, "goto needs the number of a slide, 1 or more.");
  return answerFor(show.goTo(*slide));
}

}  // namespace

Routes::Routes(Show& show, Broadcast& broadcast, const Options& options)
    : show_(show),
      broadcast_(broadcast),
      options_(options),
      guard_(options, machineName()),
      admission_(guard_, options.screens, options.hubs) {}

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
  const bool isEntering = request.path == "/screen/enter" && admission_.isAsked();
  const bool mayBeOfHub = isEntering || request.path.starts_with(statePrefix);
  if (const auto objection = guard_.objection(request, mayBeOfHub)) return Response::error(403, *objection);

  if (request.path == "/screen/check") return admission_.checked(request);
  if (isEntering) {
    return request.method == "POST" ? forHubs(admission_.entered(request), request) : entrance();
  }
  const auto visitor = admission_.visitor(request);
  if (!visitor && !isOpen(request.path)) return refusal(request);
  return answerTo(request, visitor.value_or(KnownScreen{}));
}

/// People get a page that says what to do.
Response Routes::refusal(const Request& request) const {
  if (request.path != "/" && request.path != "/remote") return unknownVisitor();
  Response response = entrance();
  response.status = 401;
  return response;
}

/// A screen that is let in here is set up at the other hubs as well.
Response Routes::entrance() const { return pageAnswer(enterPage(), options_.hubs); }

Response Routes::answerTo(const Request& request, const KnownScreen& visitor) {
  if (auto taker = streamAt(request, visitor)) {
    if (request.method != "GET") return wrongMethod("GET");
    if (!request.canStream) return Response::error(505, "An event stream needs HTTP/1.1.");
    Response response;
    response.stream = std::move(taker);
    return response;
  }
  const std::string_view path = request.path;
  if (path == "/screen/painted") return painted(request, visitor);
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
    const std::string_view name = request.path.substr(assetPrefix.size());
    return assetAnswer(request, name, show_.asset(name));
  }
  Response response = built(request);
  response.body = bodies_.shared(std::move(response.body));
  return response;
}

/// What is made for this answer.
Response Routes::built(const Request& request) {
  const std::string_view path = request.path;
  if (path == "/") return screenAnswer(request);
  if (path == "/remote") return pageAnswer(remotePage(show_.state(View{})));
  if (path == "/status") return pageAnswer(statusPage(show_.state(View{})));
  if (path == "/healthz") return json(R"({"status":"ok"})");
  if (path == "/readyz") return readyAnswer();
  if (path == "/screen/time") return json(timeJson(std::chrono::system_clock::now()));
  if (path == "/metrics") {
    return Response::fresh(200, "text/plain; version=0.0.4; charset=utf-8",
                           metricsText(show_.health(), broadcast_, failures_));
  }
  if (path == "/api/v1/state") return json(show_.stateJson());
  if (path == "/api/v1/health") return json(healthJson(show_.health(), broadcast_));
  if (path == "/api/v1/status") return json(statusJson(show_.health(), show_.state(View{}), broadcast_));
  if (path.starts_with(statePrefix)) return stateAnswer(request, path.substr(statePrefix.size()));
  if (path.starts_with(slidePrefix)) return slideAnswer(path.substr(slidePrefix.size()));
  if (path.starts_with(clientPrefix)) return clientFileAnswer(path.substr(clientPrefix.size()));
  return notFound();
}

Response Routes::screenAnswer(const Request& request) {
  const ViewAddress address = viewAddressed(request.query);
  const ScreenState state = show_.state(viewAt(show_, address));
  const auto text = queryField(request.query, "part");
  const auto part = text ? wallPartNamed(*text) : std::nullopt;
  if (text && !part) return pageAnswer(wrongPartPage(state, *text));
  // A screen whose hub is gone asks the others.
  return pageAnswer(screenPage(state, viewName(address), part, admission_.isAsked()), options_.hubs);
}

Response Routes::readyAnswer() {
  if (show_.health().isReady) return json(R"({"status":"ready"})");
  return Response::fresh(503, "application/json", R"({"status":"not ready"})");
}

Response Routes::slideAnswer(std::string_view number) {
  const auto slide = positiveNumber(number);
  if (!slide) return notFound();
  ScreenState state = show_.state(show_.view(*slide, {}));
  return state.current ? pageAnswer(std::move(state.current->html)) : notFound();
}

/// An address that makes no sense is a view of nothing: a screen shows no errors.
View Routes::viewOf(const Request& request) { return viewAt(show_, viewAddressed(request.query)); }

Response Routes::stateAnswer(const Request& request, std::string_view name) {
  if (!viewNamed(name)) return notFound();
  auto state = broadcast_.stateText(std::string(name));
  if (!state)
    return Response::error(503, "Too many views are in use, or the show cannot say how this one is.");
  return forHubs(json(std::move(*state)), request);
}

/// Pages of all hubs may read it.
Response Routes::forHubs(Response response, const Request& request) const {
  if (guard_.isOfHub(request)) {
    response.headers.emplace_back("Access-Control-Allow-Origin", request.origin);
    response.headers.emplace_back("Access-Control-Allow-Credentials", "true");
    response.headers.emplace_back("Vary", "Origin");
  }
  return response;
}

std::function<void(Connection)> Routes::streamAt(const Request& request, const KnownScreen& visitor) {
  if (request.path == "/screen/events") {
    return [this, visitor, view = viewOf(request)](Connection connection) {
      broadcast_.openScreen(std::move(connection), view, visitor);
    };
  }
  if (request.path == "/remote/events") {
    return [this, visitor](Connection connection) { broadcast_.openRemote(std::move(connection), visitor); };
  }
  if (request.path == "/api/v1/events") {
    return [this, visitor](Connection connection) { broadcast_.openProgram(std::move(connection), visitor); };
  }
  return nullptr;
}

Response Routes::painted(const Request& request, const KnownScreen& visitor) {
  if (request.method != "POST") return wrongMethod("POST");
  const auto report = parseScreenReport(request.body);
  if (!report) {
    return Response::error(400, R"(A report is {"screen":"NAME","slide":3,"sequence":17,"held":12}.)");
  }
  switch (broadcast_.painted(*report, visitor)) {
    case Broadcast::Reported::Done:
      break;
    case Broadcast::Reported::UnknownScreen:
      return notFound();
    case Broadcast::Reported::TooOften:
      return Response::error(429, "This screen has reported a moment ago.");
  }
  return Response::done();
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
    if (known == name) return [this, call = function] { return answerFor((show_.*call)()); };
  }
  for (const auto& [known, kind] : blanks) {
    if (known == name) return [this, blank = kind] { return answerFor(show_.blank(blank)); };
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
