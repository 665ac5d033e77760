#pragma once

#include <boost/asio/ip/address.hpp>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace web {

/// How many connections there are, in all and of each address. An address of IPv6
/// stands for its network of 64 bits, which is what one visitor is given. This machine
/// itself may hold all of them, as a proxy here speaks for everybody.
class Seats {
  struct Book;

 public:
  /// One connection's, given back when it is destroyed; it may outlive the Seats.
  class Seat {
   public:
    Seat(Seat&& other) noexcept
        : book_(std::exchange(other.book_, nullptr)), visitor_(std::move(other.visitor_)) {}
    Seat& operator=(Seat&& other) noexcept {
      std::swap(book_, other.book_);
      std::swap(visitor_, other.visitor_);
      return *this;
    }
    ~Seat();

   private:
    friend class Seats;
    Seat(std::shared_ptr<Book> book, std::optional<boost::asio::ip::address> visitor)
        : book_(std::move(book)), visitor_(std::move(visitor)) {}
    std::shared_ptr<Book> book_;
    /// Nothing: one of those that are kept back.
    std::optional<boost::asio::ip::address> visitor_;
  };

  /// `kept` are seats besides `all`, for those who must get in when there is no other.
  Seats(std::size_t all, std::size_t perAddress, std::size_t kept);

  /// Nothing when all are taken, or all that this address may have.
  [[nodiscard]] std::optional<Seat> take(const boost::asio::ip::address& from);
  /// One of those that are kept back; nothing when these are taken, too.
  [[nodiscard]] std::optional<Seat> takeKept();

 private:
  struct Book {
    std::size_t taken = 0;
    std::size_t keptTaken = 0;
    std::map<boost::asio::ip::address, std::size_t> byVisitor;
  };

  std::size_t all_;
  std::size_t perAddress_;
  std::size_t kept_;
  std::shared_ptr<Book> book_ = std::make_shared<Book>();
};

}  // namespace web
