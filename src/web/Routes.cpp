#include "web/Routes.h"

#include <algorithm>
#include <boost/asio/ip/host_name.hpp>
#include <charconv>
#include <utility>

#include "web/ClientFiles.h"
#include "web/Page.h"

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

Response stream(const Request& request, StreamKind kind) {
  if (request.method != "GET") return wrongMethod("GET");
  if (!request.canStream) return Response::error(505, "An event stream needs HTTP/1.1.");
  Response response;
  response.stream = kind;
  return response;
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
  int slide = 0;
  const auto [end, failed] = std::from_chars(number.data(), number.data() + number.size(), slide);
  if (failed != std::errc() || end != number.data() + number.size() || slide < 1) {
    return Response::error(400, "goto needs the number of a slide, 1 or more.");
  }
  return answerTo(show.goTo(slide));
}

/// Content types come out of decks, and a line break would end the header.
std::string safeType(const std::string& type) {
  const bool isPlain = std::all_of(type.begin(), type.end(), [](char c) { return c >= ' ' && c < 127; });
  return isPlain && !type.empty() ? type : "application/octet-stream";
}

bool isListed(std::string_view tags, std::string_view tag) {
  return tags == "*" || tags.find(tag) != std::string_view::npos;
}

}  // namespace

Routes::Routes(Show& show, const Options& options)
    : show_(show), options_(options), guard_(options, machineName()) {}

Response Routes::answer(const Request& request) {
  constexpr std::string_view failure = "The show could not do this; the program's log says why.";
  Response response;
  try {
    response = dispatch(request);
  } catch (const basic::Error& error) {
    report(error);
    response = Response::error(500, failure);
  } catch (const std::exception& error) {
    report(basic::Error(basic::AdapterError, "web", error.what()));
    response = Response::error(500, failure);
  }
  response.headers.emplace_back("X-Content-Type-Options", "nosniff");
  response.headers.emplace_back("Referrer-Policy", "no-referrer");
  return response;
}

Response Routes::dispatch(const Request& request) {
  if (request.hosts != 1) return Response::error(400, "A request needs one Host header.");
  if (const auto objection = guard_.objection(request)) return Response::error(403, *objection);

  const std::string_view path = request.target.substr(0, request.target.find('?'));
  if (path == "/screen/events") return stream(request, StreamKind::Screens);
  if (path == "/api/v1/events") return stream(request, StreamKind::Programs);
  if (path.starts_with(commandPrefix)) {
    if (const auto run = command(path.substr(commandPrefix.size()))) {
      if (request.method != "POST") return wrongMethod("POST");
      return guard_.mayChange(request) ? run() : unauthorised();
    }
  }
  Response response = get(request, path);
  const bool reading = request.method == "GET" || request.method == "HEAD";
  return reading || response.status == 404 ? response : wrongMethod("GET, HEAD");
}

Response Routes::get(const Request& request, std::string_view path) {
  if (path == "/") {
    Response response = Response::fresh(200, "text/html; charset=utf-8", screenPage(show_.picture()));
    response.headers.emplace_back("Content-Security-Policy", pagePolicy);
    return response;
  }
  if (path == "/healthz") return Response::fresh(200, "application/json", R"({"status":"ok"})");
  if (path == "/api/v1/state") return Response::fresh(200, "application/json", show_.state());
  if (path.starts_with(clientPrefix)) return clientAnswer(path.substr(clientPrefix.size()));
  if (path.starts_with(assetPrefix)) return assetAnswer(request, path.substr(assetPrefix.size()));
  return notFound();
}

Response Routes::clientAnswer(std::string_view path) {
  const std::size_t slash = path.find('/');
  if (slash == std::string_view::npos || path.substr(0, slash) != clientVersion()) return notFound();
  const ClientFile* file = clientFile(path.substr(slash + 1));
  if (file == nullptr || file->name == "screen.html") return notFound();
  Response response;
  response.headers = {{"Content-Type", std::string(contentType(file->name))},
                      {"Cache-Control", std::string(immutable)}};
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
  } else {
    response.headers.emplace_back("Content-Type", safeType(asset->contentType));
    response.body = asset->bytes;
  }
  return response;
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
  constexpr std::string_view goTo = "goto/";
  if (!name.starts_with(goTo)) return nullptr;
  return [this, number = name.substr(goTo.size())] { return answerToGoTo(show_, number); };
}

void Routes::report(const basic::Error& error) const {
  if (options_.onError) options_.onError(error);
}

}  // namespace web
