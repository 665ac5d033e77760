#pragma once

#include <boost/asio/ip/tcp.hpp>

#include "web/http/Seats.h"

namespace web {

/// A connection that somebody takes over, and the seat that goes with it. Its request has been read;
/// nothing has been sent.
struct Connection {
  boost::asio::ip::tcp::socket socket;
  Seats::Seat seat;
};

}  // namespace web
