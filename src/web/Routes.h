#pragma once

#include <functional>
#include <string_view>

#include "web/Guard.h"
#include "web/Options.h"
#include "web/Request.h"
#include "web/Response.h"
#include "web/Show.h"

namespace web {

/// Every address of the server and what stands there:
///
///   GET  /                        the screen's page
///   GET  /client/VERSION/FILE     its scripts and styles
///   GET  /assets/NAME             what the slides refer to
///   GET  /screen/events           event stream for screens
///   GET  /api/v1/events           event stream for programs
///   GET  /api/v1/state            the state, JSON
///   GET  /healthz                 {"status":"ok"}
///   POST /api/v1/next, previous, first, last, goto/N, end,
///        blank/black, blank/white, blank/off     with "Authorization: Bearer TOKEN"
///
/// HEAD works wherever GET does, streams apart. Errors are JSON, {"error":"…"}:
/// 400 for a slide number that is none, 401 without the token, 403 for a foreign
/// request (see Guard), 404, 405, 409 when the show refuses a command, 500 when
/// it fails.
class Routes {
 public:
  Routes(Show& show, const Options& options);

  /// Never throws for a failure of the show.
  [[nodiscard]] Response answer(const Request& request);

 private:
  Response dispatch(const Request& request);
  Response get(const Request& request, std::string_view path);
  Response clientAnswer(std::string_view path);
  Response assetAnswer(const Request& request, std::string_view name);
  /// What the path under /api/v1/ does; empty when it is no command.
  std::function<Response()> command(std::string_view name);
  void report(const basic::Error& error) const;

  Show& show_;
  const Options& options_;
  Guard guard_;
};

}  // namespace web
