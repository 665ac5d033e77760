#include "web/http/Guard.h"

#include <gtest/gtest.h>

#include "web/http/Options.h"

namespace web {
namespace {

struct Visit {
  const char* boundTo;
  const char* host;
  /// Null: no Origin header.
  const char* origin;
  bool welcome;
};

class GuardTest : public testing::TestWithParam<Visit> {};

TEST_P(GuardTest, LetsInWhoeverAddressesThisServer) {
  const Visit& visit = GetParam();
  Options options;
  options.address = visit.boundTo;
  options.allowedNames = {"board.example", "[2001:db8::5]"};
  Request request;
  request.host = visit.host;
  request.hasOrigin = visit.origin != nullptr;
  if (visit.origin != nullptr) request.origin = visit.origin;

  EXPECT_EQ(visit.welcome, !Guard(options, "lobby-pc").objection(request))
      << visit.boundTo << " Host: " << visit.host << " Origin: " << (visit.origin ? visit.origin : "(none)");
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, GuardTest,
    testing::Values(
        Visit{"127.0.0.1", "localhost:8080", nullptr, true}, Visit{"127.0.0.1", "LocalHost", nullptr, true},
        Visit{"127.0.0.1", "127.0.0.1:9", nullptr, true}, Visit{"127.0.0.1", "[::1]:8080", nullptr, true},
        Visit{"127.0.0.1", "[2001:db8::5]", nullptr, true},
        Visit{"127.0.0.1", "board.example", nullptr, true},
        // A foreign name that someone has pointed at 127.0.0.1.
        Visit{"127.0.0.1", "evil.example:8080", nullptr, false},
        Visit{"127.0.0.1", "localhost.evil.example", nullptr, false},
        Visit{"127.0.0.1", "192.168.1.5", nullptr, false}, Visit{"127.0.0.1", "lobby-pc", nullptr, false},
        Visit{"127.0.0.1", "", nullptr, false}, Visit{"127.0.0.1", "localhost:80x", nullptr, false},
        Visit{"127.0.0.1", "[::1", nullptr, false}, Visit{"127.0.0.1", "[]", nullptr, false},
        Visit{"127.0.0.1", "localhost@evil.example", nullptr, false},
        Visit{"127.0.0.2", "127.0.0.2", nullptr, true}, Visit{"::1", "[::1]", nullptr, true},
        Visit{"::1", "[fe80::1]", nullptr, false}, Visit{"0.0.0.0", "192.168.1.5:8080", nullptr, true},
        Visit{"0.0.0.0", "[fe80::1]", nullptr, true}, Visit{"0.0.0.0", "lobby-pc", nullptr, true},
        Visit{"0.0.0.0", "LOBBY-PC.local:8080", nullptr, true},
        Visit{"0.0.0.0", "evil.example", nullptr, false}, Visit{"::", "10.0.0.1", nullptr, true}));

INSTANTIATE_TEST_SUITE_P(
    Origins, GuardTest,
    testing::Values(Visit{"127.0.0.1", "localhost:8080", "http://localhost:8080", true},
                    // Behind something that adds TLS on the standard port.
                    Visit{"127.0.0.1", "board.example", "https://board.example", true},
                    Visit{"127.0.0.1", "board.example", "https://board.example:443", true},
                    Visit{"127.0.0.1", "board.example", "http://board.example:443", false},
                    Visit{"127.0.0.1", "localhost:8080", "http://localhost:3000", false},
                    Visit{"127.0.0.1", "localhost:8080", "http://localhost", false},
                    Visit{"127.0.0.1", "localhost:8080", "http://evil.example", false},
                    Visit{"127.0.0.1", "localhost:8080", "http://localhost:8080.evil.example", false},
                    Visit{"127.0.0.1", "localhost:8080", "null", false},
                    Visit{"127.0.0.1", "localhost:8080", "", false},
                    Visit{"127.0.0.1", "localhost:8080", "file://localhost:8080", false}));

TEST(GuardTokenTest, OnlyTheTokenItselfMayChangeSomething) {
  const auto mayChange = [](const char* token, std::string_view authorization) {
    Options options;
    options.token = token;
    Request request;
    request.authorization = authorization;
    return Guard(options, "").mayChange(request);
  };
  EXPECT_TRUE(mayChange("s3cret", "Bearer s3cret"));
  EXPECT_TRUE(mayChange("s3cret", "bearer s3cret"));
  for (const char* wrong : {"", "Bearer", "Bearer ", "Bearer s3cre", "Bearer s3cret ", "Bearer S3cret",
                            "Basic! s3cret", "s3cret"}) {
    EXPECT_FALSE(mayChange("s3cret", wrong)) << wrong;
  }
  EXPECT_FALSE(mayChange("", "Bearer "));
}

}  // namespace
}  // namespace web
