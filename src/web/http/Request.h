#pragma once

#include <string>
#include <string_view>

namespace web {

/// What the server reads of a request (RFC 9110); views into the connection's buffer,
/// which lasts until the answer is made. A header that is not there is empty.
struct Request {
  std::string_view method;
  /// As sent, not decoded; see Target.
  std::string_view path;
  std::string_view query;
  /// Of the Host header, or of the target where that names its server (RFC 9112, 3.2.2).
  std::string_view host;
  std::string_view origin;
  std::string_view authorization;
  std::string_view cookie;
  std::string_view ifNoneMatch;
  std::string_view range;
  std::string_view ifRange;
  /// At most Handler::bodyLimit().
  std::string_view body;
  /// The same, to be moved from by who keeps a large one; then `body` is void. Null while there is none.
  std::string* ownBody = nullptr;
  /// False for HTTP/1.0, which cannot carry an event stream.
  bool canStream = true;
  /// An empty Origin header is not a missing one.
  bool hasOrigin = false;
  /// How many Host headers there are; anything but one is refused.
  int hosts = 1;
};

}  // namespace web
