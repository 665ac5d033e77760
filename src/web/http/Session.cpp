// One connection's requests and answers, by Boost.Beast: the only source file that includes it, as it takes
// long to compile.
#include "web/http/Session.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <limits>
#include <optional>
#include <utility>

#include "web/http/Connection.h"
#include "web/http/Options.h"
#include "web/http/Target.h"

namespace web {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using beast::error_code;

constexpr std::uint32_t headerLimit = 16 * 1024;
/// What lies in the buffer of a body on its way to its text, and what a guest's may have.
constexpr std::size_t bodyBuffer = std::size_t{16} * 1024;
constexpr std::chrono::seconds lingerTime{2};
/// What is handed to the system at once; between two pieces everybody else has a turn.
constexpr std::size_t pieceSize = std::size_t{64} * 1024;

std::string_view view(beast::string_view text) { return {text.data(), text.size()}; }

/// What to tell a client whose request cannot be read; nothing when it is gone.
std::optional<Response> complaint(const error_code& failed) {
  if (failed == http::error::header_limit) return Response::error(431, "The request's headers are too long.");
  if (failed == http::error::body_limit) return Response::error(413, "The request's body is too long.");
  if (failed == http::error::end_of_stream || failed == http::error::partial_message ||
      failed.category() != make_error_code(http::error::bad_method).category()) {
    return std::nullopt;
  }
  return Response::error(400, "This is not an HTTP request: " + failed.message() + ".");
}

using Message = http::request<http::string_body>;

/// What is wrong with a request whose headers can be read; nothing: it may go on. Where a
/// request ends must not be open to two opinions, as proxies may have another one.
std::optional<Response> objection(const Message& message) {
  const auto codings = message.count(http::field::transfer_encoding);
  const bool isChunked = beast::iequals(message[http::field::transfer_encoding], "chunked");
  if (codings > 1 || (codings == 1 && (!isChunked || message.version() < 11))) {
    return Response::error(400, "The only Transfer-Encoding that is understood here is chunked, once.");
  }
  const auto expected = message[http::field::expect];
  if (!expected.empty() && message.version() >= 11 && !beast::iequals(expected, "100-continue")) {
    return Response::error(417, "Nothing but 100-continue can be expected here.");
  }
  return std::nullopt;
}

bool wantsToContinue(const Message& message) {
  return message.version() >= 11 && beast::iequals(message[http::field::expect], "100-continue");
}

constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";

class HttpSession : public Session, public std::enable_shared_from_this<HttpSession> {
 public:
  HttpSession(asio::ip::tcp::socket socket, std::optional<Seats::Seat> seat, Handler& handler, Owner& owner,
              const Options& options)
      : stream_(std::move(socket)),
        seat_(std::move(seat)),
        isGuest_(!seat_),
        handler_(handler),
        owner_(owner),
        options_(options) {}

  void start() override {
    error_code ignored;
    stream_.socket().set_option(asio::ip::tcp::no_delay(true), ignored);
    read(isGuest_ ? options_.guestTimeout : options_.requestTimeout);
  }

  void finish() override {
    finishing_ = true;
    if (!answering_) leave();
  }

  void close() override {
    closed_ = true;
    seat_.reset();
    stream_.close();
  }

 private:
  using Parser = http::request_parser<http::string_body>;
  using Answer = http::response<http::span_body<const char>>;

  void read(std::chrono::milliseconds patience) {
    parser_.emplace();
    parser_->header_limit(headerLimit);
    // What it may have is known when the headers are.
    parser_->body_limit(std::numeric_limits<std::uint64_t>::max());
    stream_.expires_after(patience);
    http::async_read_header(
        stream_, buffer_, *parser_,
        [self = shared_from_this()](error_code failed, std::size_t) { self->onHeader(failed); });
  }

  void onHeader(const error_code& failed) {
    if (closed_) return;
    if (failed) return onRead(failed);
    if (auto response = objection(parser_->get())) {
      answering_ = true;
      return write(std::move(*response), parser_->get().version(), false, false);
    }
    if (!allowBody()) return onRead(make_error_code(http::error::body_limit));
    if (!parser_->is_done() && wantsToContinue(parser_->get())) {
      asio::async_write(stream_, asio::buffer(goOn.data(), goOn.size()),
                        [self = shared_from_this()](error_code unsent, std::size_t) {
                          if (self->closed_) return;
                          if (unsent) return self->leave();
                          self->readBody();
                        });
    } else {
      readBody();
    }
  }

  /// False when it is too long. A long one gets the time that it takes.
  bool allowBody() {
    const std::size_t limit = isGuest_ ? bodyBuffer : handler_.bodyLimit(requestOf(parser_->get()));
    const auto length = parser_->content_length();
    if (length && *length > limit) return false;
    parser_->body_limit(limit);
    if (length && *length > bodyBuffer) {
      stream_.expires_after(options_.timeToWrite(static_cast<std::size_t>(*length)));
    }
    return true;
  }

  static Request requestOf(const Message& message) {
    const auto field = [&](http::field name) { return view(message[name]); };
    const Target target = targetOf(view(message.target()));
    Request request;
    request.method = view(message.method_string());
    request.path = target.path;
    request.query = target.query;
    request.host = target.host.value_or(field(http::field::host));
    request.hosts = static_cast<int>(message.count(http::field::host));
    request.origin = field(http::field::origin);
    request.hasOrigin = message.count(http::field::origin) > 0;
    request.authorization = field(http::field::authorization);
    request.cookie = field(http::field::cookie);
    request.ifNoneMatch = field(http::field::if_none_match);
    request.range = field(http::field::range);
    request.ifRange = field(http::field::if_range);
    request.canStream = message.version() >= 11;
    return request;
  }

  void readBody() {
    http::async_read(stream_, buffer_, *parser_,
                     [self = shared_from_this()](error_code failed, std::size_t) { self->onRead(failed); });
  }

  void onRead(const error_code& failed) {
    if (closed_) return;
    answering_ = true;
    if (!failed) return answer();
    auto response = complaint(failed);
    if (!response) return leave();
    write(std::move(*response), 11, false, false);
  }

  void answer() {
    auto& message = parser_->get();
    Request request = requestOf(message);
    request.body = message.body();
    request.ownBody = &message.body();

    Response response = isGuest_ ? handler_.answerGuest(request) : handler_.answer(request);
    if (closed_) return;
    if (!response.stream) {
      return write(std::move(response), message.version(), message.keep_alive() && !finishing_ && !isGuest_,
                   message.method() == http::verb::head);
    }
    if (!seat_) seat_ = owner_.keptSeat();
    if (!seat_) {
      return write(Response::error(503, "There are too many streams."), message.version(), false, false);
    }
    handOver(response.stream);
  }

  void handOver(const std::function<void(Connection)>& taker) {
    const auto self = shared_from_this();
    Connection connection{stream_.release_socket(), std::move(*seat_)};
    closed_ = true;
    owner_.left(*this);
    taker(std::move(connection));
  }

  void write(Response response, unsigned version, bool keepAlive, bool headOnly) {
    response_ = std::move(response);
    answer_.emplace(http::status(response_.status), version);
    const auto set = [this](std::string_view name, std::string_view value) {
      answer_->set(beast::string_view(name.data(), name.size()),
                   beast::string_view(value.data(), value.size()));
    };
    for (const auto& [name, value] : commonHeaders) set(name, value);
    for (const auto& [name, value] : response_.headers) set(name, value);
    answer_->keep_alive(keepAlive);
    const std::string_view body = response_.content();
    if (response_.status != 304 && response_.status != 204) answer_->content_length(body.size());
    if (!headOnly) answer_->body() = {body.data(), body.size()};
    serializer_.emplace(*answer_);
    serializer_->limit(pieceSize);
    stream_.expires_after(options_.timeToWrite(body.size()));
    http::async_write(stream_, *serializer_,
                      [self = shared_from_this(), keepAlive](error_code failed, std::size_t) {
                        self->onWritten(failed, keepAlive);
                      });
  }

  void onWritten(const error_code& failed, bool keepAlive) {
    if (closed_) return;
    if (failed) return leave();
    answering_ = false;
    response_ = {};  // a film, perhaps, that the deck no longer holds
    if (keepAlive && !finishing_) return read(options_.idleTimeout);
    // Closing while the client still sends would make its system throw our
    // answer away.
    error_code ignored;
    stream_.socket().shutdown(asio::socket_base::shutdown_send, ignored);
    stream_.expires_after(lingerTime);
    linger();
  }

  void linger() {
    stream_.async_read_some(asio::buffer(scrap_), [self = shared_from_this()](error_code over, std::size_t) {
      if (self->closed_) return;
      if (over || self->finishing_) {
        self->leave();
      } else {
        self->linger();
      }
    });
  }

  void leave() {
    if (closed_) return;
    const auto self = shared_from_this();
    close();
    owner_.left(*this);
  }

  beast::tcp_stream stream_;
  std::optional<Seats::Seat> seat_;
  const bool isGuest_;
  Handler& handler_;
  Owner& owner_;
  const Options& options_;
  beast::flat_buffer buffer_{headerLimit + bodyBuffer};
  std::optional<Parser> parser_;
  Response response_;
  std::optional<Answer> answer_;
  std::optional<http::response_serializer<http::span_body<const char>>> serializer_;
  std::array<char, 2048> scrap_{};
  bool answering_ = false;
  bool finishing_ = false;
  bool closed_ = false;
};

}  // namespace

std::shared_ptr<Session> Session::make(asio::ip::tcp::socket socket, std::optional<Seats::Seat> seat,
                                       Handler& handler, Owner& owner, const Options& options) {
  return std::make_shared<HttpSession>(std::move(socket), std::move(seat), handler, owner, options);
}

}  // namespace web
