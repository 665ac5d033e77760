#pragma once

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/streambuf.hpp>
#include <boost/asio/write.hpp>
#include <functional>
#include <iterator>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace app::test {

/// A web server on a thread of its own, which answers each request by a connection that then ends, with
/// whatever a test wants to be sent.
class SmallServer {
 public:
  /// The head of a request: its first line and its fields.
  using Answer = std::function<std::string(const std::string& head)>;

  explicit SmallServer(Answer answer)
      : answer_(std::move(answer)), acceptor_(context_, {boost::asio::ip::address_v4::loopback(), 0}) {
    thread_ = std::thread([this] { serve(); });
  }
  ~SmallServer() {
    isOver_ = true;
    boost::system::error_code ignored;
    boost::asio::ip::tcp::socket last(context_);
    last.connect(acceptor_.local_endpoint(), ignored);
    thread_.join();
  }
  SmallServer(const SmallServer&) = delete;
  SmallServer& operator=(const SmallServer&) = delete;

  [[nodiscard]] std::string address() const {
    return "http://127.0.0.1:" + std::to_string(acceptor_.local_endpoint().port());
  }
  /// What was asked for since the last time.
  std::vector<std::string> heads() {
    const std::lock_guard lock(mutex_);
    return std::exchange(heads_, {});
  }

  /// A whole answer.
  static std::string with(const std::string& status, const std::string& body,
                          const std::string& fields = {}) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n" + fields + "\r\n" + body;
  }
  /// "/a/b" of a head.
  static std::string pathOf(const std::string& head) {
    const std::size_t from = head.find(' ') + 1;
    return head.substr(from, head.find(' ', from) - from);
  }

 private:
  void serve() {
    while (!isOver_) {
      boost::asio::ip::tcp::socket socket(context_);
      boost::system::error_code failed;
      acceptor_.accept(socket, failed);
      if (failed || isOver_) continue;
      boost::asio::streambuf buffer;
      boost::asio::read_until(socket, buffer, "\r\n\r\n", failed);
      if (failed) continue;
      const std::string head{std::istreambuf_iterator<char>(&buffer), {}};
      {
        const std::lock_guard lock(mutex_);
        heads_.push_back(head);
      }
      boost::asio::write(socket, boost::asio::buffer(answer_(head)), failed);
      socket.shutdown(boost::asio::ip::tcp::socket::shutdown_both, failed);
    }
  }

  Answer answer_;
  boost::asio::io_context context_;
  boost::asio::ip::tcp::acceptor acceptor_;
  std::atomic<bool> isOver_ = false;
  std::mutex mutex_;
  std::vector<std::string> heads_;
  std::thread thread_;
};

}  // namespace app::test
