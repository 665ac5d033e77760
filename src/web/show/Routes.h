#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "web/http/Connection.h"
#include "web/http/Guard.h"
#include "web/http/Handler.h"
#include "web/http/Options.h"
#include "web/http/SharedBodies.h"
#include "web/show/Admission.h"
#include "web/show/Show.h"

namespace web {

class Broadcast;

/// Every address of the server and what stands there:
///
///   GET  /                        the screen's page; "?slide=N" keeps to a slide,
///                                 "?shape=NAME" (with "&slide=N") to one shape; with
///                                 "part=2x1/1" one screen of a wall (WallPart.h)
///   GET  /remote                  the page for phones that steers
///   GET  /status                  the page that tells people how the show does
///   GET  /client/VERSION/FILE     scripts and styles of the pages
///   GET  /assets/NAME             what the slides refer to, or a range of its bytes
///   GET  /slides/N                a slide as it is now, a piece of HTML
///   GET  /screen/enter            the page that asks for a token, where screens are known; it stands in
///                                 place of any page that a browser may not see
///   POST /screen/enter            lets a browser look by its token; see Admission
///   GET  /screen/check            204, or 401 for who may not look
///   GET  /screen/time             the server's time, JSON: see timeJson()
///   GET  /screen/events           event stream for screens, with the page's query
///   GET  /screen/state/VIEW       the whole state of a view by its name (ViewName.h), JSON; see docs/hubs.md
///   POST /screen/painted          a screen tells what it has painted; see docs/hubs.md
///   GET  /remote/events           the same events for remote controls, which are no screens
///   GET  /api/v1/events           event stream for programs
///   GET  /api/v1/state            the state, JSON
///   GET  /api/v1/health           how connections and screens do, JSON
///   GET  /api/v1/status           the same judged, for /status: without folders, JSON
///   GET  /healthz                 {"status":"ok"}: the program's loop turns
///   GET  /readyz                  {"status":"ready"}, or 503 before and after the show
///   GET  /metrics                 for Prometheus
///   POST /api/v1/next, previous, first, last, goto/N, end,
///        blank/black, blank/white, blank/off     with "Authorization: Bearer TOKEN"
///   POST /api/v1/pass             likewise: the browser may come in when it is full
///
/// HEAD works wherever GET does, streams apart. Errors are JSON, {"error":"…"}:
/// 400 for a slide number that is none, 401 without the token (of all but the program's own files and what
/// watches over it, where screens are known), 403 for a foreign request (see Guard), 404, 405,
/// 409 when the show refuses a command, 416 for a range behind the end, 429 for a screen that reports too
/// often, 500 when the show fails, 503 when too many are here.
class Routes : public Handler {
 public:
  /// All outlive it.
  Routes(Show& show, Broadcast& broadcast, const Options& options);

  /// A failure of the show is counted, reported and answered with 500.
  [[nodiscard]] Response answer(const Request& request) override;
  /// Only what watches over the program (/healthz, /readyz, /status), who holds the token or a pass, and the
  /// page that asks for the token are heard, others get 503.
  [[nodiscard]] Response answerGuest(const Request& request) override;

 private:
  Response dispatch(const Request& request);
  /// What `visitor` gets, who may look.
  Response answerTo(const Request& request, const KnownScreen& visitor);
  [[nodiscard]] Response refusal(const Request& request) const;
  [[nodiscard]] Response entrance() const;
  [[nodiscard]] Response forHubs(Response response, const Request& request) const;
  Response get(const Request& request);
  Response built(const Request& request);
  Response screenAnswer(const Request& request);
  Response readyAnswer();
  Response slideAnswer(std::string_view number);
  [[nodiscard]] View viewOf(const Request& request);
  Response stateAnswer(const Request& request, std::string_view name);
  Response painted(const Request& request, const KnownScreen& visitor);
  [[nodiscard]] bool mustGetIn(const Request& request) const;
  /// Who takes over the connection of a stream; empty when there is none at this address.
  std::function<void(Connection)> streamAt(const Request& request, const KnownScreen& visitor);
  /// What the path under /api/v1/ does; empty when it is no command.
  std::function<Response()> command(std::string_view name);
  [[nodiscard]] Response passAnswer() const;
  void report(const basic::Error& error);

  Show& show_;
  Broadcast& broadcast_;
  const Options& options_;
  Guard guard_;
  Admission admission_;
  SharedBodies bodies_;
  std::uint64_t failures_ = 0;
};

}  // namespace web
