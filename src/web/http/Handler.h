#pragma once

#include <cstddef>

#include "web/http/Request.h"
#include "web/http/Response.h"

namespace web {

/// Answers the requests of a listener's connections, on the listener's thread. It must not
/// block and must not throw.
class Handler {
 public:
  virtual ~Handler() = default;
  virtual Response answer(const Request& request) = 0;
  /// The same for a connection beyond those that there may be, which asks one thing and is closed.
  virtual Response answerGuest(const Request& request) = 0;
  /// How many bytes the body of a request may have, whose headers have been read.
  [[nodiscard]] virtual std::size_t bodyLimit(const Request& /*head*/) const { return 16 * 1024; }
};

}  // namespace web
