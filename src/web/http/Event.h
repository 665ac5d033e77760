#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace web {

/// A piece of an event stream, built once and shared by all streams that carry
/// it. `bytes` is a whole HTTP/1.1 chunk (RFC 9112, 7.1) around server-sent
/// events (HTML Living Standard, 9.2).
struct Message {
  std::string bytes;
  /// It says everything, so what still waits before it need not be sent.
  bool complete = false;
};
using SharedMessage = std::shared_ptr<const Message>;

/// An event as it is sent. `number` becomes its id; one without does not count. `data` may have
/// several lines, of any ending; JSON has line breaks only between its tokens.
std::string eventText(std::string_view name, std::optional<std::uint64_t> number, std::string_view data);

/// `text` as a message: events, or a comment (": …" and an empty line).
SharedMessage messageOf(std::string_view text, bool complete = false);
/// The same, and the end of the stream's body.
SharedMessage lastMessage(std::string_view text);

/// The head of the response that carries a stream; no chunk.
SharedMessage streamHead();

}  // namespace web
