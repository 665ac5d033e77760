#pragma once

#include <string_view>

namespace web {

/// What the server reads of a request; views into the connection's buffer.
struct Request {
  std::string_view method;
  /// As sent: path and query.
  std::string_view target;
  std::string_view host;
  std::string_view origin;
  std::string_view authorization;
  std::string_view ifNoneMatch;
  std::string_view range;
  std::string_view ifRange;
  std::string_view body;
  /// False for HTTP/1.0, which cannot carry an event stream.
  bool canStream = true;
  /// An empty Origin header is not a missing one.
  bool hasOrigin = false;
  /// How many Host headers there are; anything but one is refused.
  int hosts = 1;
};

}  // namespace web
