#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "web/http/ByteRange.h"

namespace web {

struct Connection;

/// What every answer carries: browsers do not guess what it is, tell no other site of
/// it, and let pages of other sites neither hold it nor reach into it.
inline constexpr std::pair<std::string_view, std::string_view> commonHeaders[] = {
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"}};

/// An answer to one request, or what becomes of its connection.
struct Response {
  int status = 200;
  /// Besides the common ones and what frames the message. Names last as long as the program.
  std::vector<std::pair<std::string_view, std::string>> headers;
  /// Shared, as some bodies are large and sent to many. Never null.
  std::shared_ptr<const std::string> body = std::make_shared<const std::string>();
  /// What is sent of the body; nothing: all of it.
  std::optional<ByteRange> range;
  /// When set, the rest is ignored: the connection is handed over once, and no more is read of it.
  std::function<void(Connection)> stream;

  /// The bytes that are sent.
  [[nodiscard]] std::string_view content() const {
    return range ? std::string_view(*body).substr(range->first, range->size) : std::string_view(*body);
  }

  /// An answer that no cache may keep.
  static Response fresh(int status, std::string contentType, std::string body);
  /// {"ok":true}
  static Response done();
  /// {"error":"why"}; `why` is a sentence.
  static Response error(int status, std::string_view why);
};

}  // namespace web
