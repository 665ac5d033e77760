#include "web/http/Seats.h"

#include <algorithm>

namespace web {
namespace {

namespace ip = boost::asio::ip;

ip::address visitorAt(const ip::address& address) {
  if (address.is_v4()) return address;
  if (address.to_v6().is_v4_mapped()) return ip::make_address_v4(ip::v4_mapped, address.to_v6());
  if (address.is_loopback()) return address;
  auto bytes = address.to_v6().to_bytes();
  std::fill(bytes.begin() + 8, bytes.end(), static_cast<unsigned char>(0));
  return ip::address_v6(bytes);
}

}  // namespace

Seats::Seats(std::size_t all, std::size_t perAddress, std::size_t kept)
    : all_(all), perAddress_(perAddress), kept_(kept) {}

std::optional<Seats::Seat> Seats::take(const ip::address& from) {
  const ip::address visitor = visitorAt(from);
  if (book_->taken >= all_) return std::nullopt;
  const auto known = book_->byVisitor.find(visitor);
  const std::size_t held = known == book_->byVisitor.end() ? 0 : known->second;
  if (held >= perAddress_ && !visitor.is_loopback()) return std::nullopt;
  ++book_->taken;
  ++book_->byVisitor[visitor];
  return Seat(book_, visitor);
}

std::optional<Seats::Seat> Seats::takeKept() {
  if (book_->keptTaken >= kept_) return std::nullopt;
  ++book_->keptTaken;
  return Seat(book_, std::nullopt);
}

Seats::Seat::~Seat() {
  if (!book_) return;
  if (!visitor_) {
    --book_->keptTaken;
    return;
  }
  --book_->taken;
  const auto held = book_->byVisitor.find(*visitor_);
  if (--held->second == 0) book_->byVisitor.erase(held);
}

}  // namespace web
