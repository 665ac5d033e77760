// Server-sent events as bytes: their fields, and the chunks around them.
#include "web/http/Event.h"

#include <array>
#include <charconv>

#include "web/http/Response.h"

namespace web {
namespace {

std::string chunk(std::string_view data) {
  std::array<char, 16> size{};
  const auto [end, failed] = std::to_chars(size.data(), size.data() + size.size(), data.size(), 16);
  std::string bytes;
  bytes.reserve(data.size() + 24);
  bytes.append(size.data(), end).append("\r\n").append(data).append("\r\n");
  return bytes;
}

SharedMessage shared(std::string bytes, bool complete) {
  return std::make_shared<const Message>(Message{std::move(bytes), complete});
}

}  // namespace

std::string eventText(std::string_view name, std::optional<std::uint64_t> number, std::string_view data) {
  std::string text;
  text.reserve(data.size() + 64);
  text.append("event: ").append(name);
  if (number) text.append("\nid: ").append(std::to_string(*number));
  text.append("\ndata: ");
  // A line break would end the field.
  for (std::size_t start = 0;;) {
    const std::size_t end = data.find_first_of("\r\n", start);
    text.append(data.substr(start, end - start));
    if (end == std::string_view::npos) break;
    text.append("\ndata: ");
    start = end + 1;
  }
  return text.append("\n\n");
}

SharedMessage messageOf(std::string_view text, bool complete) { return shared(chunk(text), complete); }

SharedMessage lastMessage(std::string_view text) { return shared(chunk(text) + "0\r\n\r\n", false); }

SharedMessage streamHead() {
  static const auto head = [] {
    std::string text =
        "HTTP/1.1 200 OK\r\n"
        "Content-Type: text/event-stream\r\n"
        "Cache-Control: no-store\r\n"
        // Proxies that gather an answer before they pass it on.
        "X-Accel-Buffering: no\r\n";
    for (const auto& [name, value] : commonHeaders)
      text.append(name).append(": ").append(value).append("\r\n");
    text += "Transfer-Encoding: chunked\r\nConnection: close\r\n\r\n";
    return shared(std::move(text), false);
  }();
  return head;
}

}  // namespace web
