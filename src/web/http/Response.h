#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "web/http/ByteRange.h"
#include "web/show/Show.h"

namespace web {

/// The stream that a request turns its connection into.
struct StreamWanted {
  bool isScreen = false;
  /// Of a screen.
  View view = {};
};

/// What every answer carries: browsers do not guess what it is, tell no other site of
/// it, and let pages of other sites neither hold it nor reach into it.
inline constexpr std::pair<std::string_view, std::string_view> commonHeaders[] = {
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"}};

struct Response {
  int status = 200;
  std::vector<std::pair<std::string_view, std::string>> headers;
  /// Shared, as assets are large and sent to many. Never null.
  std::shared_ptr<const std::string> body = std::make_shared<const std::string>();
  /// What is sent of the body; nothing: all of it.
  std::optional<ByteRange> range;
  /// When set, the rest is ignored and the connection becomes a stream.
  std::optional<StreamWanted> stream;

  /// The bytes that are sent.
  [[nodiscard]] std::string_view content() const {
    return range ? std::string_view(*body).substr(range->first, range->size) : std::string_view(*body);
  }

  /// An answer that no cache may keep.
  static Response fresh(int status, std::string contentType, std::string body);
  /// {"ok":true}
  static Response done();
  /// {"error":"why"}
  static Response error(int status, std::string_view why);
};

}  // namespace web
