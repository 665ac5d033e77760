#include "web/http/Seats.h"

#include <gtest/gtest.h>

#include <vector>

namespace web {
namespace {

using boost::asio::ip::make_address;

TEST(SeatsTest, ALimitHoldsForAllAndForEachAddress) {
  Seats seats(4, 2, 0);
  std::vector<Seats::Seat> taken;
  const auto take = [&](const char* address) {
    auto seat = seats.take(make_address(address));
    if (!seat) return false;
    taken.push_back(std::move(*seat));
    return true;
  };
  EXPECT_TRUE(take("192.0.2.1"));
  EXPECT_TRUE(take("::ffff:192.0.2.1"));
  EXPECT_FALSE(take("192.0.2.1")) << "the same address in two spellings";
  EXPECT_TRUE(take("2001:db8::1"));
  taken.erase(taken.begin());
  EXPECT_TRUE(take("192.0.2.1")) << "a seat was left";
  EXPECT_TRUE(take("2001:db8::2"));
  EXPECT_FALSE(take("192.0.2.9")) << "all are taken";
  taken.clear();
  EXPECT_TRUE(take("2001:db8::1"));
  EXPECT_TRUE(take("2001:db8::2:1"));
  EXPECT_FALSE(take("2001:db8::3")) << "one network";
  EXPECT_TRUE(take("2001:db8:0:1::1"));
  // This machine may have them all.
  for (const char* address : {"127.0.0.1", "::1", "::ffff:127.0.0.2"}) {
    Seats few(3, 1, 0);
    std::vector<Seats::Seat> own;
    while (auto seat = few.take(make_address(address))) own.push_back(std::move(*seat));
    EXPECT_EQ(own.size(), 3U) << address;
  }
}

}  // namespace
}  // namespace web
